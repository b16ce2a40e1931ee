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

}  // namespace
}  // namespace ostrel
