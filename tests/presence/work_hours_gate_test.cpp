#include "presence/work_hours_gate.h"

#include <gtest/gtest.h>

#include <memory>

#include "support/presence_bench.h"

namespace ostrel {
namespace {

struct GateBench : PresenceBench {
    explicit GateBench(const char* start, std::string timeZone = "UTC")
        : PresenceBench(start, std::move(timeZone)) {
        setUp([](auto& model) { model.workHoursEnabled = true; });
        open();
    }
    void open() {
        gate = std::make_unique<WorkHoursGate>(
            WorkHoursGate::Services{settings, calendar, systemEvents, runLoop, clock(), &engine},
            WorkHoursGate::Start::immediately);
        dayEnds_ = gate->dayEnded.subscribe([this] { ++dayEnds; });
    }
    [[nodiscard]] bool isOpen() const { return *gate->isWithinWorkHours(); }
    void runUntil(const char* local) { run((at(local) - now()).count()); }

    std::unique_ptr<WorkHoursGate> gate;
    int dayEnds = 0;

  private:
    Subscription dayEnds_;
};

TEST(WorkHoursGateTest, PausesOutsideAndResumesInsideByItself) {
    GateBench bench("2026-03-06T17:59:59");  // a Friday
    EXPECT_FALSE(bench.session.isPaused());
    bench.engine.pauseByUser(PauseDuration::indefinite());
    bench.run(0.9);
    EXPECT_FALSE(bench.isHeldBy(PauseReason::schedule));
    bench.run(0.1);
    EXPECT_TRUE(bench.isHeldBy(PauseReason::schedule));
    bench.runUntil("2026-03-09T08:59:59");
    EXPECT_FALSE(bench.isOpen());
    bench.run(1);
    EXPECT_TRUE(bench.isOpen());
    EXPECT_FALSE(bench.isHeldBy(PauseReason::schedule));
    EXPECT_TRUE(bench.isHeldBy(PauseReason::user)) << "not its own";
    EXPECT_EQ(bench.dayEnds, 1);
}

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
        EXPECT_FALSE(bench.isOpen());
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

TEST(WorkHoursGateTest, LooksAgainAtEveryOccasionAndAtEditedHoursAlone) {
    GateBench bench("2026-03-09T12:00:00");
    bench.engine.pause(PauseReason::schedule);
    bench.setUp([](auto& model) { model.eyeBreakIntervalSec = 900; });
    EXPECT_TRUE(bench.isHeldBy(PauseReason::schedule)) << "not looked at";
    for (Signal<>* event : {&bench.systemEvents.dayChanged, &bench.systemEvents.clockChanged,
                            &bench.systemEvents.didWake, &bench.systemEvents.didBecomeActive}) {
        bench.engine.pause(PauseReason::schedule);
        event->send();
        EXPECT_FALSE(bench.isHeldBy(PauseReason::schedule));
    }
    bench.setUp([](auto& model) { model.workDays.erase(2); });
    EXPECT_TRUE(bench.isHeldBy(PauseReason::schedule));
    bench.setUp([](auto& model) { model.workHoursEnabled = false; });
    EXPECT_FALSE(bench.isHeldBy(PauseReason::schedule));
}

TEST(WorkHoursGateTest, LooksAgainAtMidnightWhereNothingElseIsNear) {
    GateBench bench("2026-03-28T12:00:00", "Europe/Berlin");
    bench.setUp([](auto& model) { model.workHoursEnabled = false; });
    for (const char* midnight : {"2026-03-29T00:00:00", "2026-03-30T00:00:00"}) {
        bench.run((bench.at(midnight) - bench.now()).count() - 1);
        bench.engine.pause(PauseReason::schedule);
        bench.run(0.9);
        EXPECT_TRUE(bench.isHeldBy(PauseReason::schedule));
        bench.run(0.1);
        EXPECT_FALSE(bench.isHeldBy(PauseReason::schedule)) << midnight;
    }
}

TEST(WorkHoursGateTest, TheCountdownsStartAnewOnlyWhenTheHoursBegin) {
    GateBench bench("2026-03-09T12:00:00");
    for (int i = 0; i < 100; ++i) {
        bench.engine.tick();
    }
    bench.systemEvents.didWake.send();
    EXPECT_EQ(bench.engine.state()->eye.remainingSec, 1100);
    bench.runUntil("2026-03-10T09:00:00");
    EXPECT_EQ(bench.engine.state()->eye.remainingSec, 1200);
}

TEST(WorkHoursGateTest, FollowsTheUserIntoAnotherZone) {
    GateBench bench("2026-03-09T16:00:00", "Europe/Berlin");
    bench.zone = "Asia/Tokyo";
    bench.systemEvents.clockChanged.send();
    EXPECT_FALSE(bench.isOpen());
    bench.runUntil("2026-03-10T09:00:00");
    EXPECT_TRUE(bench.isOpen());
}

}  // namespace
}  // namespace ostrel
