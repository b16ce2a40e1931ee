#pragma once

#include <array>
#include <optional>
#include <set>
#include <string_view>
#include <tuple>

#include "base/clock.h"
#include "base/published.h"
#include "core/settings/document.h"

namespace ostrel {

// Who holds the schedule; it runs only while nobody does.
enum class PauseReason { user, focus, schedule };
constexpr std::array<std::string_view, 3> enumNames(PauseReason) {
    return {"user", "focus", "schedule"};
}

struct SessionStateModel {
    bool isPaused = false;  // always whether `pauseReasons` holds any
    std::optional<WallTime> pausedAt;
    WallTime lastQuitAt;
    std::optional<WallTime> systemSleepWakeMarker;
    std::optional<WallTime> pendingPauseForgottenFireAt;
    std::set<PauseReason> pauseReasons;
    std::optional<WallTime> userPauseUntil;  // absent: indefinite, or no user pause

    bool operator==(const SessionStateModel&) const = default;

    static constexpr auto fields() {
        using S = SessionStateModel;
        return std::tuple{Field{"isPaused", &S::isPaused},
                          Field{"pausedAt", &S::pausedAt},
                          Field{"lastQuitAt", &S::lastQuitAt},
                          Field{"systemSleepWakeMarker", &S::systemSleepWakeMarker},
                          Field{"pendingPauseForgottenFireAt", &S::pendingPauseForgottenFireAt},
                          Field{"pauseReasons", &S::pauseReasons},
                          Field{"userPauseUntil", &S::userPauseUntil}};
    }
};

// Owns whether and why breaks are paused, and a few dates kept across quits and sleeps.
//
// Of a stored pause only a timed user pause survives, and only while its end lies ahead by no more
// than a day: focus and schedule are held again by their watchers, and an indefinite pause is
// dropped so that nobody loses breaks for good by a restart.
class SessionStateStore {
  public:
    static constexpr std::string_view kKey = "ostrel.sessionState.v1";
    static constexpr WallClock::duration kLongestRestoredPause = std::chrono::hours(24);

    // Where nothing can be read, starts unpaused with `lastQuitAt` = `now`.
    SessionStateStore(PreferencesStore& preferences, WallTime now);
    SessionStateStore(const SessionStateStore&) = delete;
    SessionStateStore& operator=(const SessionStateStore&) = delete;

    [[nodiscard]] const Published<SessionStateModel>& current() const { return current_; }
    [[nodiscard]] bool isPaused() const { return current_->isPaused; }
    [[nodiscard]] bool holds(PauseReason reason) const;

    // `until` is the end of a user pause and ignored for the others. The first reason starts the
    // pause at `now`.
    void addReason(PauseReason reason, std::optional<WallTime> until, WallTime now);

    // The last reason's end clears everything that belongs to the pause.
    void removeReason(PauseReason reason);
    void clearAllReasons();

    // Only a user pause with an end can expire, at that end.
    [[nodiscard]] bool hasUserPauseExpired(WallTime now) const;

    void setPendingPauseForgottenFireAt(std::optional<WallTime> fireAt);
    void setLastQuitAt(WallTime time);
    void setSystemSleepWakeMarker(std::optional<WallTime> marker);

  private:
    void commit(SessionStateModel next);

    Document<SessionStateModel> document_;
    Published<SessionStateModel> current_;
};

}  // namespace ostrel
