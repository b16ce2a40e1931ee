#include "presence/work_hours_gate.h"

#include <gtest/gtest.h>

#include <optional>

#include "support/presence_bench.h"

namespace ostrel {
namespace {

struct GateBench : PresenceBench {
    explicit GateBench(const char* start) : PresenceBench(start) {
        setUp([](auto& model) { model.workHoursEnabled = true; });
        gate.emplace(
            WorkHoursGate::Services{settings, calendar, systemEvents, runLoop, clock(), &engine},
            WorkHoursGate::Start::immediately);
        dayEnded = gate->dayEnded.subscribe([this] { ++dayEnds; });
    }

    std::optional<WorkHoursGate> gate;
    int dayEnds = 0;
    Subscription dayEnded;
};

TEST(WorkHoursGateTest, TheDayEndsWithItsHoursAndNotWithAClockOrHoursThatMoved) {
    const struct {
        const char* end;  // the time at which it is found to be outside
        int dayEnds;
    } cases[] = {{"2026-03-09T18:00:00", 1},
                 {"2026-03-09T23:00:00", 1},
                 {"2026-03-09T08:00:00", 0},   // set back: the end lies far ahead
                 {"2026-03-14T12:00:00", 1}};  // woken up on Saturday
    for (const auto& [end, dayEnds] : cases) {
        GateBench bench("2026-03-09T12:00:00");
        bench.jumpTo(end);
        bench.systemEvents.clockChanged.send();
        EXPECT_FALSE(*bench.gate->isWithinWorkHours());
        EXPECT_EQ(bench.dayEnds, dayEnds) << end;
        bench.systemEvents.didWake.send();
        EXPECT_EQ(bench.dayEnds, dayEnds) << "once";
    }
    GateBench edited("2026-03-09T16:59:00");
    edited.setUp([](auto& model) { model.workHoursEndMinute = 900; });
    EXPECT_EQ(edited.dayEnds, 0) << "over an hour before the end";
    GateBench late("2026-03-09T17:00:00");
    late.setUp([](auto& model) { model.workDays.clear(); });
    EXPECT_EQ(late.dayEnds, 1);
    const GateBench outside("2026-03-09T20:00:00");
    EXPECT_EQ(outside.dayEnds, 0) << "the first look ends nothing";
}

}  // namespace
}  // namespace ostrel
