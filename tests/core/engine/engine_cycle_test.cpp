#include <gtest/gtest.h>

#include "support/engine_bench.h"

namespace ostrel {

struct EngineCycleTest : ::testing::Test {
    EngineCycleTest() { bench.setUp(quiet); }
    EngineBench bench;
};

TEST_F(EngineCycleTest, EachKindComesAtItsOwnIntervalToTheSecond) {
    bench.launch();
    bench.run(6000);
    EXPECT_EQ(bench.take(), (Events{"1200 open eye +0", "2400 open eye +0", "3000 open body +0",
                                    "3600 open eye +0", "4800 open eye +0", "6000 toast merged 1",
                                    "6000 open body +0"}));
}

TEST_F(EngineCycleTest, NothingMovesWhileSwitchedOffPausedOrAway) {
    const std::function<void(EngineBench&)> stops[] = {
        [](EngineBench& b) { b.setUp([](SettingsModel& s) { s.ostrelEnabled = false; }); },
        [](EngineBench& b) { b.engine().pause(PauseReason::focus); },
    };
    for (const auto& stop : stops) {
        EngineBench fresh;
        TimerEngine& engine = fresh.launch();
        stop(fresh);
        const TimerState before = *engine.state();
        fresh.run(7200);
        EXPECT_EQ(*engine.state(), before);
        EXPECT_EQ(fresh.housekeepings, 0);
    }
    TimerEngine& engine = bench.launch();
    engine.markUserIdle();
    bench.run(7200);
    EXPECT_EQ(engine.state()->eye.remainingSec, 1200);
    EXPECT_EQ(engine.state()->body.remainingSec, 3000);
    EXPECT_EQ(bench.housekeepings, 120) << "penalties lapse also while the user is away";
}

TEST_F(EngineCycleTest, BodyBreakWaitsAtZeroUntilTheScreenIsFree) {
    TimerEngine& engine = bench.launch(5000, 100);
    bench.overlayPresented = true;
    bench.run(250);
    EXPECT_EQ(engine.state()->body.remainingSec, 0);
    EXPECT_EQ(bench.take(), Events{});
    bench.overlayPresented = false;
    bench.run(1);
    EXPECT_EQ(bench.take(), (Events{"251 open body +0"}));
    EXPECT_EQ(engine.state()->body.remainingSec, 100);
}

TEST_F(EngineCycleTest, OnlyTheEyeBreakThatOpensTakesThePenalty) {
    TimerEngine& engine = bench.launch(100, 250);
    bench.setUp([](SettingsModel& settings) { settings.mergeNearbyBreaks = false; });
    bench.addPenalty(90);
    EXPECT_EQ(engine.state()->eye.pendingPenaltySec, 90);
    bench.run(100);
    EXPECT_EQ(bench.take(), (Events{"100 open eye +90"}));
    EXPECT_EQ(engine.state()->eye.pendingPenaltySec, 0);
    bench.addPenalty(180);
    bench.run(50);
    engine.startNow(BreakKind::body);
    EXPECT_EQ(bench.take(), (Events{"150 open body +0"}));
    EXPECT_EQ(bench.penaltyPool(), 180);
}

TEST_F(EngineCycleTest, StartNowRestartsItsOwnCountdownAndDoesNothingOverABreak) {
    TimerEngine& engine = bench.launch();
    bench.run(500);
    engine.startNow(BreakKind::eye);
    EXPECT_EQ(engine.state()->eye.remainingSec, 1200);
    EXPECT_EQ(engine.state()->body.remainingSec, 2500);
    bench.overlayPresented = true;
    bench.addPenalty(90);
    engine.startNow(BreakKind::eye);
    engine.startNow(BreakKind::body);
    EXPECT_EQ(bench.take(), (Events{"500 open eye +0"}));
    EXPECT_EQ(engine.state()->body.remainingSec, 2500);
    EXPECT_EQ(bench.penaltyPool(), 90);
}

TEST_F(EngineCycleTest, AbsenceOfMoreThanAnHourStartsOver) {
    TimerEngine& engine = bench.launch();
    bench.run(1000);
    bench.addPenalty(90);
    const TimerState before = *engine.state();
    engine.resumeAfterLongAbsence(3600);
    EXPECT_EQ(*engine.state(), before);
    engine.resumeAfterLongAbsence(3601);
    EXPECT_EQ(engine.state()->eye, (BreakTimer{1200, true, false, 0}));
    EXPECT_EQ(engine.state()->body, (BreakTimer{3000, true, false, 0}));
    EXPECT_EQ(bench.penaltyPool(), 0);
}

TEST_F(EngineCycleTest, PresetTakesEffectAtOnceAndForgivesThePenalty) {
    TimerEngine& engine = bench.launch();
    bench.run(1170);
    bench.addPenalty(60);
    engine.applyPreset(PresetCatalog::light());
    EXPECT_EQ(engine.state()->eye, (BreakTimer{1800, true, false, 0}));
    EXPECT_EQ(engine.state()->body, (BreakTimer{5400, true, false, 0}));
    EXPECT_EQ(bench.penaltyPool(), 0);
    EXPECT_EQ(bench.settings().settings()->activePresetID, "light");
    EXPECT_EQ(bench.settings().settings()->eyeBreakDurationSec, 45);
    bench.run(1800);
    EXPECT_EQ(bench.take(), (Events{"2970 open eye +0"}));
}

TEST_F(EngineCycleTest, OwnTimingRestartsOnlyTheCountdownWhoseIntervalChanged) {
    TimerEngine& engine = bench.launch();
    bench.run(100);
    bench.addPenalty(60);
    PresetDefinition own = PresetCatalog::standard();
    own.eyeDurationSec = 30;
    engine.applyOwnTiming(own);
    EXPECT_EQ(engine.state()->eye, (BreakTimer{1100, true, false, 60}));
    own.bodyIntervalSec = 3600;
    engine.applyOwnTiming(own);
    EXPECT_EQ(engine.state()->eye.remainingSec, 1100);
    EXPECT_EQ(engine.state()->body.remainingSec, 3600);
    own.eyeIntervalSec = 900;
    engine.applyOwnTiming(own);
    EXPECT_EQ(engine.state()->eye, (BreakTimer{900, true, false, 60}));
    EXPECT_EQ(engine.state()->body.remainingSec, 3600);
    const PresetDefinition stored = PresetCatalog::active(*bench.settings().settings());
    EXPECT_EQ(stored, (PresetDefinition{"custom", "Custom", 900, 30, 3600, 300}));
    EXPECT_EQ(engine.activeIntervalSec(BreakKind::eye), stored.eyeIntervalSec);
    EXPECT_EQ(bench.penaltyPool(), 60);
}

TEST_F(EngineCycleTest, HousekeepingComesOnceInSixtyTicks) {
    bench.launch();
    bench.run(59);
    EXPECT_EQ(bench.housekeepings, 0);
    bench.run(1);
    EXPECT_EQ(bench.housekeepings, 1);
    bench.run(60);
    EXPECT_EQ(bench.housekeepings, 2);
}

TEST_F(EngineCycleTest, RunsWithoutAnyCollaborator) {
    TimerEngine& engine = bench.launch(EngineCollaborators{});
    bench.run(6000);
    engine.markUserReturned(600);
    engine.pauseByUser(PauseDuration::forMinutes(5));
    bench.run(600);
    EXPECT_FALSE(engine.postpone(BreakKind::eye));
    EXPECT_EQ(bench.take(), (Events{"1200 open eye +0", "2400 open eye +0", "3000 open body +0",
                                    "3600 open eye +0", "4800 open eye +0", "6000 open body +0"}));
}

TEST_F(EngineCycleTest, SecondStartOfTheTickChangesNothing) {
    TimerEngine& engine = bench.launch();
    engine.startTicking();
    bench.run(10);
    EXPECT_EQ(engine.state()->eye.remainingSec, 1190);
}

}  // namespace ostrel
