#include <gtest/gtest.h>

#include "platform/api/iso_time.h"
#include "support/engine_bench.h"

namespace ostrel {

using namespace std::chrono_literals;

struct EnginePauseTest : ::testing::Test {
    EnginePauseTest() { bench.setUp(quiet); }
    [[nodiscard]] double forgottenInSec() {
        const auto fireAt = bench.session().current()->pendingPauseForgottenFireAt;
        return fireAt ? (*fireAt - bench.runLoop.wallNow()).count() : -1;
    }
    EngineBench bench;
};

TEST_F(EnginePauseTest, ScheduleStopsUntilTheLastReasonIsGone) {
    TimerEngine& engine = bench.launch();
    bench.overlayPresented = true;
    bench.run(100);
    engine.pause(PauseReason::focus);
    EXPECT_EQ(bench.take(), (Events{"100 remind in 3600", "100 close for pause"}));
    engine.pause(PauseReason::schedule);
    bench.run(100);
    engine.endPause(PauseReason::focus);
    EXPECT_FALSE(engine.state()->eye.isRunning);
    bench.run(100);
    EXPECT_EQ(engine.state()->eye.remainingSec, 1100);
    engine.endPause(PauseReason::schedule);
    bench.run(100);
    EXPECT_EQ(engine.state()->eye, (BreakTimer{1000, true, false, 0}));
}

TEST_F(EnginePauseTest, EndOfAPauseRestartsTheCountdownsOnlyOnRequest) {
    TimerEngine& engine = bench.launch(1200, 1500);
    bench.run(1250);
    EXPECT_TRUE(engine.eyeMergedIntoBody());
    engine.pause(PauseReason::schedule);
    engine.endPause(PauseReason::schedule);
    EXPECT_EQ(engine.state()->body.remainingSec, 250);
    EXPECT_TRUE(engine.eyeMergedIntoBody());
    engine.pause(PauseReason::schedule);
    engine.endPause(PauseReason::schedule, TimerEngine::Countdowns::restart);
    EXPECT_EQ(engine.state()->body.remainingSec, 1500);
    EXPECT_EQ(engine.state()->eye.remainingSec, 1200);
    EXPECT_FALSE(engine.eyeMergedIntoBody());
}

TEST_F(EnginePauseTest, ReasonThatIsSaidAgainLeavesABreakThatWasStartedMeanwhile) {
    TimerEngine& engine = bench.launch();
    engine.pause(PauseReason::schedule);
    bench.take();
    engine.startNow(BreakKind::eye);
    bench.overlayPresented = true;
    engine.pause(PauseReason::schedule);
    EXPECT_EQ(bench.take(), (Events{"0 open eye +0"}));
    engine.pause(PauseReason::focus);
    EXPECT_EQ(bench.take(), (Events{"0 close for pause"}));
}

TEST_F(EnginePauseTest, CountdownsBeginAnewAlsoWhenTheUserHadEndedThePauseBefore) {
    TimerEngine& engine = bench.launch(1200, 1500);
    engine.pause(PauseReason::schedule);
    engine.endAllPauses();
    bench.run(100);
    engine.endPause(PauseReason::schedule);
    EXPECT_EQ(engine.state()->eye.remainingSec, 1100);
    engine.endPause(PauseReason::schedule, TimerEngine::Countdowns::restart);
    EXPECT_EQ(engine.state()->eye.remainingSec, 1200);
}

TEST_F(EnginePauseTest, TimedPauseEndsByItself) {
    TimerEngine& engine = bench.launch();
    engine.pauseByUser(PauseDuration::forMinutes(30));
    bench.take();
    bench.run(1799);
    EXPECT_TRUE(bench.session().isPaused());
    bench.run(1);
    EXPECT_EQ(bench.take(), (Events{"1800 reminder withdrawn", "1800 toast pause ended"}));
    EXPECT_TRUE(engine.state()->eye.isRunning);
    EXPECT_LT(forgottenInSec(), 0);
}

TEST_F(EnginePauseTest, TimedPauseEndsForItselfAlone) {
    TimerEngine& engine = bench.launch();
    engine.pauseByUser(PauseDuration::forMinutes(30));
    engine.pause(PauseReason::focus);
    bench.take();
    bench.run(1800);
    EXPECT_EQ(bench.take(), (Events{"1800 reminder withdrawn", "1800 toast pause ended"}));
    EXPECT_TRUE(bench.session().isPaused());
    EXPECT_FALSE(bench.session().holds(PauseReason::user));
}

TEST_F(EnginePauseTest, TimedPauseFollowsTheWallClock) {
    TimerEngine& engine = bench.launch();
    engine.pauseByUser(PauseDuration::forMinutes(60));
    bench.run(600);
    bench.runLoop.shiftWallClock(2h);
    bench.runLoop.runDue();
    EXPECT_FALSE(bench.session().isPaused()) << "the end was slept through";
    engine.pauseByUser(PauseDuration::forMinutes(10));
    bench.runLoop.shiftWallClock(-1h);
    bench.run(3600);
    EXPECT_TRUE(bench.session().isPaused());
    bench.run(600);
    EXPECT_FALSE(bench.session().isPaused());
}

TEST_F(EnginePauseTest, ALaterPauseReplacesTheEndOfAnEarlierOne) {
    TimerEngine& engine = bench.launch();
    engine.pauseByUser(PauseDuration::forMinutes(30));
    engine.pauseByUser(PauseDuration::indefinite());
    bench.run(7200);
    EXPECT_TRUE(bench.session().isPaused());
    EXPECT_FALSE(bench.session().current()->userPauseUntil);
}

TEST_F(EnginePauseTest, TimedPauseGoesOnAfterARelaunchAndEnds) {
    struct {
        std::int64_t minutes;
        std::int64_t closedSec;
        bool isPaused;
    } const cases[] = {{120, 60, true}, {120, 7200, false}, {1500, 60, true}, {1502, 60, false}};
    for (const auto& [minutes, closedSec, isPaused] : cases) {
        EngineBench fresh;
        fresh.launch();
        fresh.engine().pauseByUser(PauseDuration::forMinutes(minutes));
        fresh.run(3600);
        fresh.runLoop.shiftWallClock(std::chrono::seconds(closedSec));
        TimerEngine& engine = fresh.launch();
        EXPECT_EQ(fresh.session().isPaused(), isPaused) << minutes << " " << closedSec;
        EXPECT_EQ(engine.state()->eye.isRunning, !isPaused);
        if (isPaused) {
            fresh.take();
            fresh.run(minutes * 60 - 3600 - closedSec);
            EXPECT_FALSE(fresh.session().isPaused()) << minutes;
            EXPECT_TRUE(fresh.take().back().ends_with(" toast pause ended")) << minutes;
        }
    }
}

TEST_F(EnginePauseTest, NextMorningIsTheNextStartOfWorkOnTheUsersClock) {
    struct {
        const char* zone;
        const char* now;
        std::int64_t workStartMinute;  // -1: no work hours
        const char* end;
    } const cases[] = {
        {"UTC", "2026-03-09T08:00:00", -1, "2026-03-09T09:00:00"},
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

TEST_F(EnginePauseTest, ToggleEndsEveryPauseOrBeginsAnIndefiniteOne) {
    TimerEngine& engine = bench.launch();
    engine.togglePause();
    EXPECT_TRUE(bench.session().holds(PauseReason::user));
    EXPECT_FALSE(bench.session().current()->userPauseUntil);
    engine.pause(PauseReason::focus);
    engine.togglePause();
    EXPECT_FALSE(bench.session().isPaused());
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

TEST_F(EnginePauseTest, ReminderIsNotMadeUpForWhenTheUserPausesLater) {
    TimerEngine& engine = bench.launch();
    engine.pause(PauseReason::focus);
    bench.run(4000);
    bench.take();
    engine.pauseByUser(PauseDuration::indefinite());
    bench.run(10);
    EXPECT_EQ(bench.take(), Events{});
}

TEST_F(EnginePauseTest, PauseThatARelaunchDropsLeavesNoReminder) {
    bench.launch().pauseByUser(PauseDuration::indefinite());
    bench.take();
    bench.launch();
    EXPECT_EQ(bench.take(), (Events{"0 reminder withdrawn"}));
    EXPECT_LT(forgottenInSec(), 0);
}

TEST_F(EnginePauseTest, ReminderOfAPauseThatIsNotTheUsersNeverGetsOut) {
    bench.launch().pause(PauseReason::schedule);
    bench.run(3600);
    EXPECT_EQ(bench.take(), (Events{"0 remind in 3600", "3600 reminder withdrawn"}));
}

}  // namespace ostrel
