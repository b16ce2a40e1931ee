#include "platform/linux/linux_run_loop.h"

#include <gtest/gtest.h>

#include <QAbstractEventDispatcher>
#include <limits>
#include <string>
#include <vector>

#include "platform/linux/event_loop.h"
#include "platform/linux/linux_clock.h"

namespace ostrel {
namespace {

using namespace std::chrono_literals;

struct LinuxRunLoopTest : ::testing::Test {
    LinuxRunLoop loop{systemWallTime};
    std::string log;

    RunLoop::Callback note(char what) {
        return [this, what] { log += what; };
    }
};

TEST_F(LinuxRunLoopTest, TimersFireOnceDueAndInTheOrderOfTheirTimes) {
    const RunLoopTime began = loop.now();
    const WallTime wallBegan = systemWallTime();
    RunLoopClock::duration late{0};
    const Timer slow = loop.callAfter(60ms, note('c'));
    const Timer quick = loop.callAfter(20ms, [&] {
        late = loop.now() - began;
        log += 'a';
    });
    const Timer wall = loop.callAt(wallBegan + WallClock::duration{0.04}, [&] {
        EXPECT_GE((systemWallTime() - wallBegan).count(), 0.04);
        log += 'b';
    });
    const Timer past = loop.callAt(wallTimeAt(-1e300), note('0'));
    const Timer never =
        loop.callAt(wallTimeAt(std::numeric_limits<double>::quiet_NaN()), note('x'));
    EXPECT_EQ(log, "");
    ASSERT_TRUE(runUntil([&] { return log.size() >= 4; }));
    EXPECT_EQ(log, "0abc");
    EXPECT_GE(late, 20ms);
}

TEST_F(LinuxRunLoopTest, WakesOnlyForTimersThatAreDueAndOnceForTimersOfOneMoment) {
    const Timer first = loop.repeat(30ms, 30ms, note('a'));
    for (const RunLoopTime armed = loop.now(); loop.now() - armed < 3ms;) {
    }
    const Timer second = loop.repeat(30ms, 30ms, note('b'));
    const Timer third = loop.repeat(60ms, 60ms, note('c'));
    std::vector<Timer> stopped;
    for (int i = 1; i < 50; ++i) {
        stopped.push_back(loop.callAfter(i * 3ms, note('x')));
    }
    stopped.clear();
    int wakeUps = 0;
    const auto counter = QObject::connect(QAbstractEventDispatcher::instance(),
                                          &QAbstractEventDispatcher::awake, [&] { ++wakeUps; });
    while (log.size() < 10) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    QObject::disconnect(counter);
    EXPECT_EQ(log, "ababcababc");
    // The four moments 30, 60, 90 and 120 ms; on a busy machine a wake-up may come a moment early
    // and be followed by another. Timers that do not share theirs need eight.
    EXPECT_LE(wakeUps, 7);
}

TEST_F(LinuxRunLoopTest, ATimerThatArmsItselfForThePastLeavesOthersTheirTurn) {
    Timer endless;
    std::function<void()> again = [&] { endless = loop.callAt(wallTimeAt(0), again); };
    again();
    bool served = false;
    QTimer::singleShot(0, qApp, [&] { served = true; });
    EXPECT_TRUE(runUntil([&] { return served; }));
    endless.cancel();
}

TEST(LinuxRunLoopClockTest, WallTimersFollowAClockThatIsSet) {
    WallTime wallNow = wallTimeAt(800'000'000);
    LinuxRunLoop loop([&] { return wallNow; });
    std::string log;
    const Subscription watch = loop.clockWasSet.subscribe([&] { log += 's'; });
    const Timer hour = loop.callAt(wallNow + 1h, [&] { log += 'h'; });
    const Timer soon = loop.callAt(wallNow + WallClock::duration{0.03}, [&] { log += 'x'; });
    wallNow -= 2h;  // puts both off
    loop.handleClockChange();
    runFor(60ms);
    EXPECT_EQ(log, "s");
    wallNow += 3h;
    loop.handleClockChange();
    EXPECT_EQ(log, "ssxh");
}

}  // namespace
}  // namespace ostrel
