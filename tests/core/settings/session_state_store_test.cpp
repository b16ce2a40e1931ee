#include "core/settings/session_state_store.h"

#include <gtest/gtest.h>

#include "platform/virtual/memory_preferences.h"

namespace ostrel {

using namespace std::chrono_literals;

constexpr WallTime kNow{WallClock::duration{794'915'400.25}};  // 2026-03-11 09:50 UTC
using Reasons = std::set<PauseReason>;

struct SessionStateStoreTest : ::testing::Test {
    SessionStateStore launch(WallTime now = kNow) { return {preferences, now}; }
    MemoryPreferences preferences;
};

TEST_F(SessionStateStoreTest, OnlyATimedUserPauseWithinADaySurvivesARelaunch) {
    using Until = std::optional<WallClock::duration>;
    struct {
        Reasons reasons;
        Until until;
        bool survives;
    } const cases[] = {
        {{PauseReason::user, PauseReason::schedule}, 2h, true},
        {{PauseReason::user}, 24h, true},
        {{PauseReason::user}, 24h + 1s, false},
        {{PauseReason::user}, 25h, false},
        {{PauseReason::user}, 0s, false},
        {{PauseReason::user}, 0.5s, true},
        {{PauseReason::user}, -1s, false},
        {{PauseReason::user}, std::nullopt, false},
        {{PauseReason::focus, PauseReason::schedule}, 2h, false},
    };
    for (const auto& [reasons, until, survives] : cases) {
        preferences.remove(SessionStateStore::kKey);
        SessionStateModel before;
        {
            auto store = launch(kNow - 1h);
            store.setLastQuitAt(kNow - 30min);
            store.setSystemSleepWakeMarker(kNow - 2h);
            for (const PauseReason reason : reasons) {
                store.addReason(reason, until ? std::optional(kNow + *until) : std::nullopt,
                                kNow - 1h);
            }
            store.setPendingPauseForgottenFireAt(kNow);
            before = *store.current();
        }
        const auto store = launch();
        SessionStateModel expected = before;
        expected.isPaused = survives;
        expected.pauseReasons = survives ? Reasons{PauseReason::user} : Reasons{};
        if (!survives) {
            expected.pausedAt.reset();
            expected.userPauseUntil.reset();
        }
        EXPECT_EQ(*store.current(), expected) << (until ? until->count() : -1);
    }
}

}  // namespace ostrel
