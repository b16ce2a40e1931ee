#include <gtest/gtest.h>

#include "platform/api/iso_time.h"
#include "support/engine_bench.h"

namespace ostrel {

struct EnginePauseTest : ::testing::Test {
    EnginePauseTest() { bench.setUp(quiet); }
    [[nodiscard]] double forgottenInSec() {
        const auto fireAt = bench.session().current()->pendingPauseForgottenFireAt;
        return fireAt ? (*fireAt - bench.runLoop.wallNow()).count() : -1;
    }
    EngineBench bench;
};

TEST_F(EnginePauseTest, NextMorningIsTheNextStartOfWorkOnTheUsersClock) {
    struct {
        const char* zone;
        const char* now;
        std::int64_t workStartMinute;  // -1: no work hours
        const char* end;
    } const cases[] = {
        {"UTC", "2026-03-09T09:00:00", -1, "2026-03-10T09:00:00"},
        {"UTC", "2026-03-09T10:00:00", -1, "2026-03-10T09:00:00"},
        {"UTC", "2026-03-09T10:00:00", 630, "2026-03-09T10:30:00"},
        {"UTC", "2026-03-09T10:00:00", 2000, "2026-03-10T09:00:00"},
        {"Europe/Berlin", "2026-03-28T22:00:00", -1, "2026-03-29T09:00:00"},
        {"Europe/Berlin", "2026-03-28T22:00:00", 150, "2026-03-29T03:00:00"},
        {"Europe/Berlin", "2026-10-24T22:00:00", 150, "2026-10-25T02:30:00"},
        {"Asia/Beirut", "2022-03-26T22:00:00", 0, "2022-03-27T01:00:00"},
        {"America/Havana", "2022-11-05T22:00:00", 0, "2022-11-06T00:00:00"},
    };
    for (const auto& [zone, now, workStartMinute, end] : cases) {
        EngineBench fresh(now, zone);
        if (workStartMinute >= 0) {
            fresh.setUp([minute = workStartMinute](SettingsModel& settings) {
                settings.workHoursEnabled = true;
                settings.workHoursStartMinute = minute;
            });
        }
        fresh.launch().pauseByUser(PauseDuration::untilNextMorning());
        ASSERT_TRUE(fresh.session().current()->userPauseUntil);
        EXPECT_EQ(
            isoLocalTime(fresh.calendar, *fresh.session().current()->userPauseUntil).substr(0, 19),
            end)
            << zone << " " << now;
    }
}

TEST_F(EnginePauseTest, ForgottenPauseIsRemindedOfOnlyWhileTheUserHoldsIt) {
    TimerEngine& engine = bench.launch();
    engine.pause(PauseReason::focus);
    EXPECT_EQ(forgottenInSec(), 3600);
    bench.run(1000);
    engine.pauseByUser(PauseDuration::indefinite());
    EXPECT_EQ(forgottenInSec(), 2600) << "counted from when the pause began";
    engine.endPause(PauseReason::user);
    EXPECT_EQ(bench.take(),
              (Events{"0 remind in 3600", "1000 remind in 2600", "1000 reminder withdrawn"}));
    engine.pause(PauseReason::user);
    engine.endPause(PauseReason::focus);
    bench.run(2600);
    EXPECT_EQ(bench.take(), (Events{"1000 remind in 2600"})) << "left to the system to deliver";
}

TEST_F(EnginePauseTest, ANewReasonTakesEverythingOffTheScreenAndTheSameOneAgainNothing) {
    bench.setUp([](SettingsModel& settings) { settings.breakSoonLeadSec = 60; });
    TimerEngine& engine = bench.launch(1000, 5000);
    int closings = 0;
    const Subscription counting =
        engine.shouldCloseOverlayForPause.subscribe([&closings] { ++closings; });
    bench.run(950);
    for (const auto& [reason, expected] : {std::pair{PauseReason::schedule, 1},
                                           {PauseReason::schedule, 1},
                                           {PauseReason::focus, 2},
                                           {PauseReason::user, 3},
                                           {PauseReason::focus, 3},
                                           {PauseReason::user, 4}}) {
        engine.pause(reason);
        EXPECT_EQ(closings, expected) << nameOf(reason);
    }
    EXPECT_EQ(bench.take(),
              (Events{"940 soon eye 60 or later", "950 remind in 3600", "950 soon withdrawn",
                      "950 remind in 3600", "950 remind in 3600"}));
}

}  // namespace ostrel
