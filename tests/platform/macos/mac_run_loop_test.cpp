#include "platform/macos/mac_run_loop.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace ostrel {
namespace {

using namespace std::chrono_literals;
using Duration = RunLoopClock::duration;

// A Mac's two clocks and its one timer, moved by hand.
struct MacRunLoopTest : ::testing::Test {
    struct HandAlarm : MacRunLoop::Alarm {
        explicit HandAlarm(MacRunLoopTest& of) : test(of) {}
        ~HandAlarm() override { test.ringsAt.reset(); }
        void ringIn(std::optional<Duration> wait) override {
            test.ringsAt = wait ? std::optional(test.awakeNow + *wait) : std::nullopt;
        }
        MacRunLoopTest& test;
    };

    // Time goes by and the system is awake: rings whenever it is time.
    void goOn(Duration length) {
        const RunLoopTime end = awakeNow + length;
        while (ringsAt && *ringsAt <= end) {
            const RunLoopTime ring = std::max(*ringsAt, awakeNow);
            wallNow += std::chrono::duration<double>(ring - awakeNow);
            awakeNow = ring;
            ringsAt.reset();
            ++rings;
            alarm->rang.send();
        }
        wallNow += std::chrono::duration<double>(end - awakeNow);
        awakeNow = end;
    }
    RunLoop::Callback note(char what) {
        return [this, what] { log += what; };
    }

    WallTime wallNow = wallTimeAt(800'000'000);
    RunLoopTime awakeNow{Duration{5s}};
    std::optional<RunLoopTime> ringsAt;
    int rings = 0;
    std::string log;
    HandAlarm* alarm = new HandAlarm(*this);
    std::unique_ptr<MacRunLoop> loop = std::make_unique<MacRunLoop>(
        MacRunLoop::Clocks{[this] { return awakeNow; }, [this] { return wallNow; }},
        std::unique_ptr<MacRunLoop::Alarm>(alarm));
};

TEST_F(MacRunLoopTest, OneAlarmRingsForTheEarliestTimerOfEitherClock) {
    const Timer slow = loop->callAfter(90s, note('c'));
    EXPECT_EQ(ringsAt, awakeNow + 90s);
    const Timer wall = loop->callAt(wallNow + wallSec(60), note('b'));
    EXPECT_EQ(ringsAt, awakeNow + 60s);
    Timer quick = loop->callAfter(20s, note('a'));
    EXPECT_EQ(ringsAt, awakeNow + 20s);
    goOn(59s);
    EXPECT_EQ(log, "a");
    goOn(100s);
    EXPECT_EQ(log, "abc");
    EXPECT_EQ(ringsAt, std::nullopt);
    // One that is stopped wakes nobody.
    quick = loop->callAfter(20s, note('x'));
    quick.cancel();
    EXPECT_EQ(ringsAt, std::nullopt);
}

TEST_F(MacRunLoopTest, AnAlarmThatRingsEarlyRunsNothingAndIsSetAgain) {
    const Timer timer = loop->callAfter(20s, note('a'));
    ringsAt = awakeNow + 19999ms;
    goOn(19999ms);
    EXPECT_EQ(log, "");
    EXPECT_EQ(ringsAt, awakeNow + 1ms);
    goOn(1ms);
    EXPECT_EQ(log, "a");
}

TEST_F(MacRunLoopTest, WallTimersFollowTheClockOnceItIsLookedAtAgain) {
    const Timer hour = loop->callAt(wallNow + wallSec(3600), note('h'));
    const Timer soon = loop->callAt(wallNow + wallSec(30), note('s'));
    const Timer awake = loop->callAfter(7200s, note('x'));
    wallNow -= wallSec(600);  // the clock is set back: both are put off
    loop->recheck();
    goOn(600s);
    EXPECT_EQ(log, "");
    goOn(30s);
    EXPECT_EQ(log, "s");
    wallNow += wallSec(4000);  // a sleep, in which no other time goes by
    loop->recheck();
    EXPECT_EQ(log, "sh");
    goOn(1000s);
    EXPECT_EQ(log, "sh");
}

TEST_F(MacRunLoopTest, NoTimeIsTooFarForTheAlarm) {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    const Timer past = loop->callAt(wallTimeAt(-kInfinity), note('p'));
    EXPECT_EQ(ringsAt, awakeNow);
    const Timer never = loop->callAt(wallTimeAt(kInfinity), note('x'));
    const Timer odd = loop->callAt(wallTimeAt(std::numeric_limits<double>::quiet_NaN()), note('x'));
    goOn(49h);
    EXPECT_EQ(log, "p");
    EXPECT_EQ(rings, 3);  // now, and once a day
}

TEST_F(MacRunLoopTest, AnEventLoopInsideACallbackGoesOnWithWhatIsDue) {
    const Timer dialogue = loop->callAfter(1s, [this] {
        log += '(';
        goOn(1s);
        log += ')';
    });
    const Timer same = loop->callAfter(1s, note('a'));
    goOn(1s);
    EXPECT_EQ(log, "(a)");
}

TEST_F(MacRunLoopTest, MayGoInItsOwnCallback) {
    const Timer last = loop->callAfter(1s, [this] { loop.reset(); });
    const Timer after = loop->callAfter(1s, note('x'));
    goOn(1s);
    EXPECT_EQ(log, "");
}

}  // namespace
}  // namespace ostrel
