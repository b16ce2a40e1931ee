#include <gtest/gtest.h>

#include <algorithm>

#include "support/engine_bench.h"

namespace ostrel {

struct EngineWarningTest : ::testing::Test {
    void leads(std::int64_t soonSec, std::int64_t toastSec) {
        bench.setUp([&](SettingsModel& settings) {
            settings.breakSoonLeadSec = soonSec;
            settings.preBreakToastLeadSec = toastSec;
        });
    }
    EngineBench bench;
};

TEST_F(EngineWarningTest, EachWarningComesOnceACycleAtItsLead) {
    bench.launch();
    bench.run(1201);
    EXPECT_EQ(bench.take(), (Events{"1140 soon eye 60 or later", "1190 toast pre-break eye 10",
                                    "1200 soon withdrawn", "1200 open eye +0"}));
}

TEST_F(EngineWarningTest, LeadOfNothingOrOfAWholeIntervalNeverWarns) {
    const std::pair<std::int64_t, bool> leadsSec[] = {
        {0, false}, {99, true}, {100, false}, {120, false}};
    for (const auto& [lead, warns] : leadsSec) {
        EngineBench fresh;
        fresh.setUp([leadSec = lead](SettingsModel& settings) {
            settings.breakSoonLeadSec = leadSec;
            settings.preBreakToastLeadSec = 0;
        });
        fresh.launch(100, 9000);
        fresh.run(99);
        EXPECT_EQ(!fresh.take().empty(), warns) << lead;
    }
}

TEST_F(EngineWarningTest, BreakThatWillMergeIsNotAnnounced) {
    bench.launch(1200, 1300);
    bench.run(1200);
    EXPECT_EQ(bench.take(), (Events{"1200 toast merged 2"}));
    bench.run(99);
    EXPECT_EQ(bench.take(), (Events{"1240 soon body 60 or later", "1290 toast pre-break body 10"}));
}

TEST_F(EngineWarningTest, EyeBreakThatComesAfterTheBodyBreakIsAnnounced) {
    const std::pair<std::int64_t, bool> bodyIntervalsSec[] = {
        {1190, true}, {1198, true}, {1199, false}};
    for (const auto& [bodySec, isAnnounced] : bodyIntervalsSec) {
        EngineBench fresh;
        fresh.setUp([](SettingsModel& settings) { settings.preBreakToastLeadSec = 0; });
        fresh.launch(1200, bodySec);
        fresh.run(1140);
        const Events events = fresh.take();
        EXPECT_EQ(std::count(events.begin(), events.end(), "1140 soon eye 60 or later"),
                  isAnnounced)
            << bodySec;
    }
}

TEST_F(EngineWarningTest, StartNowTakesBackWhatWasAnnouncedAndBeginsTheCycleAnew) {
    TimerEngine& engine = bench.launch(1200, 9000);
    bench.run(1195);
    bench.take();
    engine.startNow(BreakKind::body);
    EXPECT_EQ(bench.take(), (Events{"1195 soon withdrawn", "1195 open body +0"}));
    bench.run(1);
    EXPECT_EQ(bench.take(), (Events{"1196 soon eye 4 or later", "1196 toast pre-break eye 4"}));
}

TEST_F(EngineWarningTest, WarningsWaitForAFreeScreenAndSayTheSecondsThatAreLeft) {
    bench.launch();
    bench.overlayPresented = true;
    bench.run(1150);
    bench.overlayPresented = false;
    bench.run(42);
    bench.overlayPresented = true;
    bench.run(3);
    bench.overlayPresented = false;
    EXPECT_EQ(bench.take(), (Events{"1151 soon eye 49 or later", "1190 toast pre-break eye 10"}));
}

TEST_F(EngineWarningTest, PreBreakToastWaitsForTheToastOnScreen) {
    leads(0, 10);
    bench.toastStays = true;
    TimerEngine& engine = bench.launch();
    bench.postponesLeft = 0;
    EXPECT_FALSE(engine.postpone(BreakKind::eye));
    bench.run(1195);
    EXPECT_EQ(bench.take(), (Events{"0 toast none left"}));
    engine.endAllPauses();
    engine.pause(PauseReason::focus);
    engine.endPause(PauseReason::focus);  // dismisses whatever is on the screen
    bench.take();
    bench.run(1);
    EXPECT_EQ(bench.take(), (Events{"1196 toast pre-break eye 4"}));
}

TEST_F(EngineWarningTest, PostponePutsTheBreakOffOnce) {
    TimerEngine& engine = bench.launch();
    bench.run(1195);
    bench.take();
    EXPECT_TRUE(engine.postpone(BreakKind::eye));
    EXPECT_EQ(engine.state()->eye.remainingSec, 305);
    ASSERT_EQ(bench.log.size(), 1U);
    EXPECT_EQ(bench.log[0].outcome, BreakLogEntry::Outcome::postponed);
    EXPECT_EQ(bench.log[0].durationSec, 0);
    EXPECT_FALSE(engine.postpone(BreakKind::eye));
    EXPECT_EQ(bench.take(), (Events{"1195 soon withdrawn", "1195 toast none left"}));
    EXPECT_EQ(engine.state()->eye.remainingSec, 305);
    bench.postponesLeft = 1;
    bench.overlayPresented = true;
    EXPECT_FALSE(engine.postpone(BreakKind::eye));
    EXPECT_EQ(bench.postponesLeft, 1);
}

TEST_F(EngineWarningTest, BreakPostponedOnScreenIsBackInFiveMinutes) {
    leads(0, 0);
    TimerEngine& engine = bench.launch(1200, 9000);
    bench.run(1200);
    engine.postponePresented(BreakKind::eye);
    bench.run(300);
    EXPECT_EQ(bench.take(), (Events{"1200 open eye +0", "1500 open eye +0"}));
}

TEST_F(EngineWarningTest, AwayCreditCountsTheBreaksThatFitIntoTheAbsence) {
    struct {
        std::int64_t awaySec;
        const char* toast;
        std::int64_t eyeSec;
        std::int64_t bodySec;
    } const cases[] = {
        {0, "", 200, 2000},
        {119, "", 200, 2000},
        {120, "1000 toast away eye 2", 1200, 2000},
        {299, "1000 toast away eye 4", 1200, 2000},
        {300, "1000 toast away both 5", 1200, 3000},
        {43'200, "1000 toast away both 720", 1200, 3000},
        {43'201, "", 200, 2000},
    };
    for (const auto& [awaySec, toast, eyeSec, bodySec] : cases) {
        EngineBench fresh;
        fresh.setUp(quiet);
        TimerEngine& engine = fresh.launch();
        fresh.run(1000);
        engine.markUserIdle();
        engine.markUserReturned(awaySec);
        EXPECT_EQ(fresh.take(), *toast ? Events{toast} : Events{}) << awaySec;
        EXPECT_EQ(engine.state()->eye, (BreakTimer{eyeSec, true, false, 0})) << awaySec;
        EXPECT_EQ(engine.state()->body, (BreakTimer{bodySec, true, false, 0})) << awaySec;
    }
}

TEST_F(EngineWarningTest, AbsenceCanBeACreditForTheBodyBreakAlone) {
    leads(0, 0);
    bench.setUp([](SettingsModel& settings) { settings.eyeBreakDurationSec = 400; });
    TimerEngine& engine = bench.launch(1200, 1500);
    bench.run(1300);
    EXPECT_TRUE(engine.eyeMergedIntoBody());
    bench.take();
    engine.markUserReturned(300);
    EXPECT_EQ(bench.take(), (Events{"1300 toast away body 5"}));
    EXPECT_EQ(engine.state()->body.remainingSec, 1500);
    EXPECT_EQ(engine.state()->eye.remainingSec, 1100);
    EXPECT_FALSE(engine.eyeMergedIntoBody());
    bench.setUp([](SettingsModel& settings) { settings.eyeBreakDurationSec = 0; });
    engine.markUserReturned(0);
    EXPECT_EQ(bench.take(), Events{}) << "no absence, no credit";
}

TEST_F(EngineWarningTest, AwayCreditNeverSaysLessThanAMinuteAndNeedsAFreeScreen) {
    leads(0, 0);
    bench.setUp([](SettingsModel& settings) { settings.eyeBreakDurationSec = 20; });
    TimerEngine& engine = bench.launch();
    engine.markUserReturned(45);
    EXPECT_EQ(bench.take(), (Events{"0 toast away eye 1"}));
    bench.run(100);
    bench.overlayPresented = true;
    engine.markUserIdle();
    engine.markUserReturned(45);
    EXPECT_EQ(bench.take(), Events{});
    EXPECT_EQ(engine.state()->eye, (BreakTimer{1100, true, false, 0}));
    bench.overlayPresented = false;
    bench.setUp([](SettingsModel& settings) { settings.creditAwayAsBreak = false; });
    engine.markUserReturned(45);
    EXPECT_EQ(bench.take(), Events{});
}

}  // namespace ostrel
