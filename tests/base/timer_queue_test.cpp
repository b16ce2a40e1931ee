#include "base/timer_queue.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "base/checked_seconds.h"

namespace ostrel {

using namespace std::chrono_literals;

struct TimerQueueTest : ::testing::Test {
    void runAt(RunLoopClock::duration runLoop, WallClock::duration wall) {
        while (queue.runNext(RunLoopTime{runLoop}, WallTime{wall})) {
        }
    }
    auto noting(char what) {
        return [this, what] { ran += what; };
    }
    TimerQueue queue;
    std::string ran;
};

TEST_F(TimerQueueTest, CallbackMayStopItselfAndOthersAndArmNewOnes) {
    Timer self;
    Timer other = queue.add(RunLoopTime{2s}, 0ns, noting('x'));
    Timer fresh;
    self = queue.add(RunLoopTime{1s}, 1s, [&, alive = std::string("still here")] {
        self.cancel();
        other.cancel();
        fresh = queue.add(RunLoopTime{2s}, 0ns, noting('f'));
        ran += alive.front();
    });
    runAt(2s, 0s);
    runAt(9s, 0s);
    EXPECT_EQ(ran, "sf");
}

TEST_F(TimerQueueTest, HandleMayOutliveTheQueueAndItsOwnFiring) {
    Timer outlives;
    {
        TimerQueue shortLived;
        outlives = shortLived.add(RunLoopTime{1s}, 0ns, [] {});
    }
    outlives.cancel();
    Timer fired = queue.add(RunLoopTime{1s}, 0ns, noting('o'));
    runAt(1s, 0s);
    const auto next = queue.add(RunLoopTime{2s}, 0ns, noting('n'));
    fired.cancel();
    runAt(2s, 0s);
    EXPECT_EQ(ran, "on");
}

TEST(CheckedSecondsTest, OverflowIsFatalAndNeverAWrap) {
    constexpr std::int64_t most = INT64_MAX;
    EXPECT_EQ(addSec(most - 1, 1), most);
    EXPECT_EQ(wholeSec(-1.9), -1);
    EXPECT_EQ(wholeSec(0x1p62), std::int64_t{1} << 62);
    EXPECT_DEATH((void)addSec(most, 1), "overflow");
    EXPECT_DEATH((void)subtractSec(-most, 2), "overflow");
    EXPECT_DEATH((void)multiplySec(most / 2, 3), "overflow");
    EXPECT_DEATH((void)wholeSec(0x1p63), "64 bits");
    EXPECT_DEATH((void)wholeSec(std::numeric_limits<double>::quiet_NaN()), "64 bits");
}

}  // namespace ostrel
