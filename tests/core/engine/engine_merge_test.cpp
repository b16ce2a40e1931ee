#include <gtest/gtest.h>

#include "support/engine_bench.h"

namespace ostrel {

struct EngineMergeTest : ::testing::Test {
    EngineMergeTest() { bench.setUp(quiet); }
    EngineBench bench;
};

// The eye break falls due at second 1200 with a duration of 120: it merges up to 120 + 300 seconds
// before the body break.
TEST_F(EngineMergeTest, FoldsAnEyeBreakThatComesCloseEnoughBeforeTheBodyBreak) {
    struct {
        std::int64_t gapSec;
        Events events;
    } const cases[] = {
        {1, {"1200 toast merged 1", "1200 open body +0"}},
        {60, {"1200 toast merged 1"}},
        {61, {"1200 toast merged 2"}},
        {200, {"1200 toast merged 4"}},
        {420, {"1200 toast merged 7"}},
        {421, {"1200 open eye +0"}},
    };
    for (const auto& [gapSec, events] : cases) {
        EngineBench fresh;
        fresh.setUp(quiet);
        TimerEngine& engine = fresh.launch(1200, 1199 + gapSec);
        fresh.run(1200);
        EXPECT_EQ(fresh.take(), events) << gapSec;
        EXPECT_EQ(engine.eyeMergedIntoBody(), gapSec <= 420) << gapSec;
        EXPECT_EQ(engine.state()->eye.remainingSec, 1200) << gapSec;
    }
}

TEST_F(EngineMergeTest, WindowGrowsWithTheEyeDurationAndCanBeSwitchedOff) {
    bench.setUp([](SettingsModel& settings) { settings.eyeBreakDurationSec = 20; });
    bench.launch(600, 599 + 321);
    bench.run(600);
    EXPECT_EQ(bench.take(), (Events{"600 open eye +0"}));

    bench.setUp([](SettingsModel& settings) { settings.mergeNearbyBreaks = false; });
    bench.launch(600, 599 + 320);
    bench.run(600);
    EXPECT_EQ(bench.take(), (Events{"1200 open eye +0"}));
}

TEST_F(EngineMergeTest, FurtherEyeBreaksBeforeTheBodyBreakFoldSilently) {
    TimerEngine& engine = bench.launch(100, 400);
    bench.run(400);
    EXPECT_EQ(bench.take(), (Events{"100 toast merged 6", "400 open body +0"}));
    EXPECT_TRUE(engine.takeMergedEyeBreak());
    EXPECT_FALSE(engine.takeMergedEyeBreak()) << "credited twice";
}

TEST_F(EngineMergeTest, AToastOnScreenIsNotReplacedByTheMergeNotice) {
    bench.toastStays = true;
    TimerEngine& engine = bench.launch(100, 400);
    bench.postponesLeft = 0;
    EXPECT_FALSE(engine.postpone(BreakKind::eye));
    bench.run(100);
    EXPECT_EQ(bench.take(), (Events{"0 toast none left"}));
    EXPECT_TRUE(engine.eyeMergedIntoBody());
}

TEST_F(EngineMergeTest, EyeBreakDueWhileAnotherIsOnScreenFoldsWithoutANotice) {
    bench.overlayPresented = true;
    TimerEngine& engine = bench.launch(100, 5000);
    bench.run(100);
    EXPECT_EQ(bench.take(), Events{});
    EXPECT_TRUE(engine.eyeMergedIntoBody());
    EXPECT_EQ(engine.state()->eye.remainingSec, 100);
}

TEST_F(EngineMergeTest, FreshStartForgetsTheFoldedEyeBreak) {
    const std::pair<const char*, std::function<void(TimerEngine&)>> starts[] = {
        {"eye break now", [](TimerEngine& e) { e.startNow(BreakKind::eye); }},
        {"long absence", [](TimerEngine& e) { e.resumeAfterLongAbsence(3601); }},
        {"preset", [](TimerEngine& e) { e.applyPreset(PresetCatalog::light()); }},
    };
    for (const auto& [name, start] : starts) {
        EngineBench fresh;
        TimerEngine& engine = fresh.launch(100, 300);
        fresh.run(150);
        EXPECT_TRUE(engine.eyeMergedIntoBody());
        start(engine);
        EXPECT_FALSE(engine.eyeMergedIntoBody()) << name;
    }
    TimerEngine& engine = bench.launch(100, 300);
    bench.run(150);
    engine.startNow(BreakKind::body);
    EXPECT_TRUE(engine.takeMergedEyeBreak()) << "this is the body break it was folded into";
}

TEST_F(EngineMergeTest, BodyBreakThatDidNotTakePlaceBringsTheEyeBreakWithinAMinute) {
    TimerEngine& engine = bench.launch(1200, 1300);
    bench.run(1300);
    EXPECT_EQ(bench.take(), (Events{"1200 toast merged 2", "1300 open body +0"}));
    engine.bodyBreakNotCompleted();
    EXPECT_EQ(engine.state()->eye.remainingSec, 60);
    EXPECT_FALSE(engine.eyeMergedIntoBody());

    bench.run(30);
    engine.bodyBreakNotCompleted();
    EXPECT_EQ(engine.state()->eye.remainingSec, 30) << "nothing was merged, nothing is cut";
}

}  // namespace ostrel
