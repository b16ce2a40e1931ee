#include "base/timer_queue.h"

#include <gtest/gtest.h>

#include <string>

#include "base/checked_seconds.h"
#include "base/day_key.h"
#include "base/uuid.h"

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

TEST_F(TimerQueueTest, MostOverdueRunsFirstThenTheOneArmedFirst) {
    const auto c = queue.add(RunLoopTime{5s}, 0ns, noting('c'));
    const auto a = queue.add(RunLoopTime{3s}, 0ns, noting('a'));
    const auto d = queue.add(WallTime{105s}, noting('d'));
    const auto b = queue.add(WallTime{104s}, noting('b'));
    runAt(5s, 105s);
    EXPECT_EQ(ran, "abcd");
}

TEST_F(TimerQueueTest, RepeatingTimerKeepsItsGridAndSkipsWhatWasMissed) {
    const auto tick = queue.add(RunLoopTime{1s}, 1s, noting('t'));
    runAt(3500ms, 0s);
    EXPECT_EQ(ran, "t");
    EXPECT_EQ(queue.nextRunLoopDue(), RunLoopTime{4s});
}

TEST_F(TimerQueueTest, WallTimersFollowTheWallClockAlone) {
    const auto timer = queue.add(WallTime{100s}, noting('w'));
    runAt(9999s, 99.9s);
    EXPECT_EQ(ran, "");
    runAt(0s, 100s);
    EXPECT_EQ(ran, "w");
    EXPECT_FALSE(queue.nextWallDue());
}

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

TEST(DayKeyTest, IsPaddedAndSortsByDate) {
    EXPECT_EQ(dayKey({2026, 3, 9}), "2026-03-09");
    EXPECT_EQ(dayKey({987, 12, 31}), "0987-12-31");
    EXPECT_LT(dayKey({2026, 9, 30}), dayKey({2026, 10, 1}));
}

TEST(DayKeyTest, IsReadOnlyAsItIsWritten) {
    EXPECT_EQ(parseDayKey("2024-02-29"), (CalendarDay{2024, 2, 29}));
    for (const char* wrong : {"", "2023-02-29", "2026-3-09", "2026/03/09", "0000-01-01",
                              "2026-03-0\xd9", "+026-03-09", "2026-03-091"}) {
        EXPECT_EQ(parseDayKey(wrong), std::nullopt) << wrong;
    }
}

TEST(DayKeyTest, DaysAreCountedWithoutAnyZone) {
    EXPECT_EQ(addDays({2026, 2, 28}, 1), (CalendarDay{2026, 3, 1}));
    EXPECT_EQ(addDays({2026, 1, 1}, -1), (CalendarDay{2025, 12, 31}));
    EXPECT_EQ(daysBetween({2026, 3, 9}, {2026, 3, 2}), -7);
    EXPECT_EQ(weekdayOf({2026, 3, 8}), 1);
    EXPECT_EQ(weekdayOf({2026, 3, 14}), 7);
}

TEST(UuidTest, HasItsFormAndFollowsItsSeed) {
    const std::string one = uuidText(randomUuids()());
    ASSERT_EQ(one.size(), 36U);
    EXPECT_EQ(one[14], '4');
    EXPECT_NE(std::string("89AB").find(one[19]), std::string::npos);
    EXPECT_NE(one, uuidText(randomUuids()()));
    EXPECT_EQ(seededUuids(7)(), seededUuids(7)());
    const MakeUuid maker = seededUuids(7);
    const MakeUuid copy = maker;
    EXPECT_NE(maker(), copy()) << "copies must not repeat each other";
}

TEST(UuidTest, IsReadInEitherCaseAndNothingElseIs) {
    const std::string text = "0F1E2D3C-4B5A-4968-8778-A695B4C3D2E1";
    const auto uuid = parseUuid(text);
    ASSERT_TRUE(uuid);
    EXPECT_EQ(uuidText(*uuid), text);
    EXPECT_EQ(parseUuid("0f1e2d3c-4b5a-4968-8778-a695b4c3d2e1"), uuid);
    for (const char* wrong : {"", "0F1E2D3C-4B5A-4968-8778-A695B4C3D2E",
                              "0F1E2D3C-4B5A-4968-8778-A695B4C3D2EG",
                              "0F1E2D3C04B5A-4968-8778-A695B4C3D2E1",
                              "{F1E2D3C-4B5A-4968-8778-A695B4C3D2E}"}) {
        EXPECT_FALSE(parseUuid(wrong)) << wrong;
    }
}

}  // namespace ostrel
