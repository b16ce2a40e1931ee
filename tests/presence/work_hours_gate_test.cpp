#include "presence/work_hours_gate.h"

#include <gtest/gtest.h>

#include "support/records_bench.h"

namespace ostrel {

struct WorkHoursGateTest : ::testing::Test {
    RecordsBench bench{"2026-03-09T17:59:00"};  // a Monday
    WorkHoursGate gate{
        {bench.settings, bench.calendar, bench.systemEvents, bench.runLoop, bench.clock()},
        WorkHoursGate::Start::immediately};
    int ends = 0;
    Subscription watching = gate.dayEnded.subscribe([this] { ++ends; });

    WorkHoursGateTest() {
        bench.setUp([](SettingsModel& settings) { settings.workHoursEnabled = true; });
    }
};

TEST_F(WorkHoursGateTest, TheDayEndsOnceWhenTheHoursDo) {
    EXPECT_EQ(gate.workUntil(), bench.at("2026-03-09T18:00:00"));
    bench.run(59);
    EXPECT_EQ(ends, 0);
    bench.run(2);
    EXPECT_EQ(ends, 1);
    EXPECT_EQ(gate.workUntil(), std::nullopt);
    bench.run(7200);
    EXPECT_EQ(ends, 1);
}

TEST_F(WorkHoursGateTest, NoDayEndsWhereTheHoursOrTheClockMoved) {
    const auto setEnd = [this](std::int64_t minute) {
        bench.setUp([minute](SettingsModel& settings) { settings.workHoursEndMinute = minute; });
    };
    setEnd(1200);  // they end at 20:00
    setEnd(600);
    EXPECT_FALSE(*gate.isWithinWorkHours());
    EXPECT_EQ(ends, 0) << "two hours early";
    setEnd(1080);
    bench.jumpTo("2026-03-09T23:00:00");
    bench.systemEvents.didWake.send();
    EXPECT_EQ(ends, 1) << "slept through, and still told";
}

}  // namespace ostrel
