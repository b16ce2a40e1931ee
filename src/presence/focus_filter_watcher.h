#pragma once

#include <array>
#include <optional>
#include <string_view>

#include "base/published.h"
#include "base/subscription.h"
#include "platform/api/distributed_announcements.h"

namespace ostrel {

class SettingsStore;
class TimerEngine;

// Whether the system's Do Not Disturb is taken to be on.
enum class FocusBehavior { off, on };
constexpr std::array<std::string_view, 2> enumNames(FocusBehavior) {
    return {"off", "on"};
}

// Follows the system's Do Not Disturb announcements and pauses the schedule meanwhile, where the
// settings ask for it. Off until something is announced.
class FocusFilterWatcher {
  public:
    // What the watcher works with. All of it outlives the watcher.
    struct Services {
        const SettingsStore& settingsStore;
        const DistributedAnnouncements& announcements;
        TimerEngine* timerEngine = nullptr;  // may be absent
    };

    explicit FocusFilterWatcher(Services services);
    FocusFilterWatcher(const FocusFilterWatcher&) = delete;
    FocusFilterWatcher& operator=(const FocusFilterWatcher&) = delete;
    ~FocusFilterWatcher();

    [[nodiscard]] const Published<FocusBehavior>& behavior() const { return behavior_; }

    // Acts on the state last heard, as if it had just been announced for the first time. The
    // watcher does not follow the settings by itself.
    void applyAgain();

  private:
    void apply(FocusBehavior behavior);

    Services services_;
    Published<FocusBehavior> behavior_;
    Subscription observers_;
};

}  // namespace ostrel
