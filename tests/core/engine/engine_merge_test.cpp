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

TEST_F(EngineMergeTest, EyeBreakDueWhileAnotherIsOnScreenFoldsWithoutANotice) {
    bench.overlayPresented = true;
    TimerEngine& engine = bench.launch(100, 5000);
    bench.run(100);
    EXPECT_EQ(bench.take(), Events{});
    EXPECT_TRUE(engine.eyeMergedIntoBody());
    EXPECT_EQ(engine.state()->eye.remainingSec, 100);
}

}  // namespace ostrel
