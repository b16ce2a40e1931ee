#pragma once

#include <cstdint>
#include <functional>
#include <list>

#include "base/published.h"
#include "core/engine/engine_ports.h"
#include "platform/api/run_loop.h"

namespace ostrel {

class FrontmostApplication;
class SettingsStore;

// Whether the user is in a call: one of the settings' deferAppBundleIDs is the frontmost
// application. One that runs in the background holds no break.
class MeetingWatcher : public MeetingPresenceGuarding {
  public:
    static constexpr std::int64_t kPollSec = 5;
    static constexpr std::int64_t kRecheckSec = 30;

    // What the watcher works with. All of it outlives the watcher.
    struct Services {
        const SettingsStore& settingsStore;
        const FrontmostApplication& frontmost;
        RunLoop& runLoop;
    };

    // Looks at once, in the next turn of the loop, and then every kPollSec.
    explicit MeetingWatcher(Services services);
    MeetingWatcher(const MeetingWatcher&) = delete;
    MeetingWatcher& operator=(const MeetingWatcher&) = delete;
    ~MeetingWatcher() override;

    [[nodiscard]] const Published<bool>& meetingActive() const { return meetingActive_; }
    [[nodiscard]] bool isMeetingActive() const override { return *meetingActive_; }

    // Looks every kRecheckSec and runs `completion` once, when no call is in front.
    void waitUntilClear(std::function<void()> completion) override;

  private:
    struct Wait {
        Timer timer;
        std::function<void()> completion;
    };
    using Waits = std::list<Wait>;

    [[nodiscard]] bool isDeferralAppFrontmost() const;
    void refresh();
    void armRecheck(Waits::iterator wait);

    Services services_;
    Published<bool> meetingActive_;
    Waits waits_;
    Timer pollTimer_;
};

}  // namespace ostrel
