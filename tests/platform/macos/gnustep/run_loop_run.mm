#import <AppKit/AppKit.h>
#include <gtest/gtest.h>

#include "platform/macos/mac_clock.h"
#include "platform/macos/main_timer.h"
#include "spin.h"

namespace ostrel {
namespace {

using namespace std::chrono_literals;

struct MainTimerRun : ::testing::Test {
    MainTimer timer;
    int rings = 0;
    Subscription watch = timer.rang.subscribe([this] { ++rings; });
};

TEST_F(MainTimerRun, RingsOnceWhenItIsTimeAndNotBefore) {
    const RunLoopTime began = macAwakeTime();
    timer.ringIn(40ms);
    ASSERT_TRUE(spinUntil([this] { return rings == 1; }));
    EXPECT_GE(macAwakeTime() - began, 39ms);
    spinFor(0.1);
    EXPECT_EQ(rings, 1);
}

TEST_F(MainTimerRun, SettingItAgainReplacesWhatWasSet) {
    timer.ringIn(10ms);
    timer.ringIn(60ms);
    spinFor(0.03);
    EXPECT_EQ(rings, 0);
    ASSERT_TRUE(spinUntil([this] { return rings == 1; }));
    timer.ringIn(10ms);
    timer.ringIn(std::nullopt);
    spinFor(0.05);
    EXPECT_EQ(rings, 1);
}

TEST_F(MainTimerRun, RingsWhileAMenuOrADialogueRunsTheLoop) {
    for (NSString* mode in @[ NSEventTrackingRunLoopMode, NSModalPanelRunLoopMode ]) {
        rings = 0;
        timer.ringIn(10ms);
        EXPECT_TRUE(spinUntil([this] { return rings == 1; }, mode, 2)) << [mode UTF8String];
    }
}

TEST_F(MainTimerRun, IsSilentOnceItIsGone) {
    auto gone = std::make_unique<MainTimer>();
    const Subscription hears = gone->rang.subscribe([this] { rings = 100; });
    gone->ringIn(10ms);
    gone.reset();
    spinFor(0.05);
    EXPECT_EQ(rings, 0);
}

struct MacRunLoopRun : ::testing::Test {
    MacRunLoop loop{{macAwakeTime, macWallTime}, std::make_unique<MainTimer>()};
    std::string log;

    RunLoop::Callback note(char what) {
        return [this, what] { log += what; };
    }
};

TEST_F(MacRunLoopRun, TimersOfBothClocksFireInTheOrderOfTheirTimes) {
    const WallTime wallBegan = macWallTime();
    const Timer slow = loop.callAfter(90ms, note('c'));
    const Timer quick = loop.callAfter(20ms, note('a'));
    const Timer wall = loop.callAt(wallBegan + WallClock::duration{0.06}, [&] {
        EXPECT_GE((macWallTime() - wallBegan).count(), 0.06);
        log += 'b';
    });
    const Timer past = loop.callAt(wallTimeAt(-1e300), note('0'));
    EXPECT_EQ(log, "");
    ASSERT_TRUE(spinUntil([this] { return log.size() >= 4; }));
    EXPECT_EQ(log, "0abc");
}

TEST_F(MacRunLoopRun, RepeatingTimersKeepTheirGridAndShareTheirRings) {
    int rings = 0;
    const Subscription watch = loop.turnBegins.subscribe([&] { ++rings; });
    const RunLoopTime began = loop.now();
    const Timer first = loop.repeat(50ms, 50ms, note('a'));
    const Timer second = loop.repeat(50ms, 50ms, note('b'));
    ASSERT_TRUE(spinUntil([this] { return log.size() >= 8; }));
    EXPECT_EQ(log, "abababab");
    EXPECT_GE(loop.now() - began, 200ms);
    // A ring may come a moment early and be followed by another.
    EXPECT_LE(rings, 8);
}

}  // namespace
}  // namespace ostrel
