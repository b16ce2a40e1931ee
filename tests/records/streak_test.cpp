#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

#include "records/break_log.h"
#include "records/daily_counter.h"
#include "records/day_end_announcer.h"
#include "records/streak_tracker.h"
#include "support/events.h"
#include "support/records_bench.h"

namespace ostrel {
namespace {

constexpr const char* kStreak = "ostrel.streak.v1";
constexpr const char* kDayEnd = "ostrel.dayEnd.v1";
using Outcome = BreakLogEntry::Outcome;

class Bench : public RecordsBench, DayEndNotifying {
  public:
    explicit Bench(const char* start = "2026-03-09T09:00:00", std::string timeZone = "UTC")
        : RecordsBench(start, std::move(timeZone)) {
        setGoal(2);
        launch();
    }

    // A second call is a relaunch over the same preferences.
    void launch() {
        tracker_.reset();
        counter_ = std::make_unique<DailyCounter>(
            DailyCounter::Services{preferences, calendar, runLoop, systemEvents, clock()});
        log_ = std::make_unique<BreakLog>(preferences, calendar, clock());
        tracker_ = std::make_unique<StreakTracker>(
            StreakTracker::Services{preferences, settings, *log_, *counter_, calendar, clock()});
        announcer_ = std::make_unique<DayEndAnnouncer>(
            DayEndAnnouncer::Services{preferences, settings, *log_, calendar, clock(), this});
    }
    void setGoal(std::int64_t goal) {
        setUp([goal](SettingsModel& model) { model.dailyGoalBreaks = goal; });
    }
    void take(int count, Outcome outcome = Outcome::completed) {
        for (int i = 0; i < count; ++i) {
            run(60);
            log_->append(entry(now(), BreakKind::eye, outcome));
        }
    }
    // The clock shows another time, and the program hears of it.
    void goTo(const char* local) {
        jumpTo(local);
        systemEvents.clockChanged.send();
    }
    void flyTo(const char* timeZone) {
        zone = timeZone;
        systemEvents.clockChanged.send();
    }
    [[nodiscard]] Streak streak() const { return *tracker_->streak(); }

    struct Step {
        const char* time;  // empty: goes on at once
        int taken;
        Streak streak;
    };
    void live(const std::vector<Step>& steps) {
        for (std::size_t i = 0; i < steps.size(); ++i) {
            const auto& [time, taken, expected] = steps[i];
            if (*time != '\0') {
                goTo(time);
            }
            take(taken);
            EXPECT_EQ(streak(), expected) << "step " << i << " " << time;
        }
    }
    DayEndAnnouncer& announcer() { return *announcer_; }

    Events announced;

  private:
    void postDayEnd(std::int64_t completed, std::int64_t goal) override {
        announced.push_back(std::to_string(completed) + " of " + std::to_string(goal));
    }

    std::unique_ptr<DailyCounter> counter_;
    std::unique_ptr<BreakLog> log_;
    std::unique_ptr<StreakTracker> tracker_;
    std::unique_ptr<DayEndAnnouncer> announcer_;
};

}  // namespace

TEST(StreakTest, DaysOnWhichTheGoalIsReachedFollowEachOther) {
    Bench bench;
    bench.take(3, Outcome::skipped);
    bench.take(1, Outcome::autoFadeOut);
    bench.live({{"", 0, {0, 0}},
                {"", 1, {1, 1}},  // today counts once it has reached the goal
                {"", 5, {1, 1}},
                {"2026-03-10T08:00:00", 1, {1, 1}},  // and breaks nothing until it is over
                {"", 1, {2, 2}},
                {"2026-03-11T23:59:00", 0, {2, 2}}});
    bench.run(60);
    bench.live({{"", 0, {0, 2}}, {"", 2, {1, 2}}});
    bench.launch();
    EXPECT_EQ(bench.streak(), (Streak{1, 2}));
}

TEST(StreakTest, GoalIsTakenAsItWasOnTheDay) {
    Bench bench;
    bench.take(2);
    bench.setGoal(5);
    bench.live({{"", 0, {1, 1}}, {"2026-03-10T08:00:00", 3, {1, 1}}});
    bench.goTo("2026-03-11T08:00:00");
    bench.setGoal(3);
    bench.live({{"", 0, {0, 1}}, {"", 2, {0, 1}}});  // yesterday's goal was 5
    bench.setGoal(2);
    EXPECT_EQ(bench.streak(), (Streak{1, 1})) << "today's may still be lowered";
}

TEST(StreakTest, DaysOffNeitherBreakNorLengthen) {
    Bench bench("2026-03-12T09:00:00");  // a Thursday
    bench.setUp([](SettingsModel& model) { model.workHoursEnabled = true; });
    bench.live({{"", 2, {1, 1}},
                {"2026-03-13T09:00:00", 2, {2, 2}},
                {"2026-03-14T09:00:00", 2, {2, 2}},
                {"2026-03-16T09:00:00", 0, {2, 2}}});
    bench.setUp([](SettingsModel& model) { model.workHoursEnabled = false; });
    // The days off of last week stay days off.
    bench.live({{"", 0, {2, 2}}, {"", 2, {3, 3}}, {"2026-03-23T09:00:00", 0, {0, 3}}});
}

TEST(StreakTest, OutlivesTheLog) {
    Bench bench;
    for (CalendarDay day{2026, 3, 9}; day < CalendarDay{2026, 6, 30}; day = addDays(day, 1)) {
        bench.goTo((dayKey(day) + "T10:00:00").c_str());
        bench.take(2);
    }
    bench.launch();
    bench.live({{"", 0, {113, 113}},
                {"2026-07-02T10:00:00", 0, {0, 113}},
                {"2027-07-02T10:00:00", 2, {1, 113}}});
}

TEST(StreakTest, WithoutARecordTheLogIsTheHistory) {
    Bench bench;
    bench.live({{"", 2, {1, 1}}, {"2026-03-10T10:00:00", 2, {2, 2}}});
    bench.preferences.write(kStreak, "damaged");
    bench.launch();
    EXPECT_EQ(bench.streak(), (Streak{2, 2}));
}

TEST(StreakTest, ClockThatWasAheadCostsNothing) {
    for (const char* ahead : {"2026-03-11T09:00:00", "2026-03-20T09:00:00", "2026-05-01T09:00:00",
                              "2031-01-01T09:00:00"}) {
        Bench bench("2026-03-07T09:00:00");
        bench.live({{"", 2, {1, 1}},
                    {"2026-03-08T09:00:00", 2, {2, 2}},
                    {"2026-03-09T09:00:00", 0, {2, 2}},
                    {ahead, 0, {0, 2}},
                    {"2026-03-09T10:00:00", 0, {2, 2}},
                    {"", 2, {3, 3}},
                    {"2026-03-10T10:00:00", 2, {4, 4}}});
    }
}

TEST(StreakTest, ClockThatWasBehindLosesNothingAndChangesNoVerdict) {
    Bench bench("2026-03-06T09:00:00");
    bench.live({{"", 2, {1, 1}},
                {"2026-03-07T09:00:00", 2, {2, 2}},
                {"2026-03-08T09:00:00", 2, {3, 3}},
                {"2026-03-09T09:00:00", 0, {3, 3}}});
    bench.setGoal(5);
    for (const char* behind : {"2026-03-05T09:00:00", "2001-01-01T00:00:00"}) {
        bench.goTo(behind);
        bench.run(3600);
        bench.launch();
        bench.live({{"2026-03-09T10:00:00", 0, {3, 3}}});
    }
    bench.goTo("2026-03-12T09:00:00");
    bench.setGoal(1);
    bench.goTo("2026-03-08T09:00:00");
    // Missed days stay missed under another goal.
    bench.live({{"2026-03-12T10:00:00", 0, {0, 3}}});
}

TEST(StreakTest, DayThatWasLeftOutWhileTheClockWasWrongIsJudgedAfterwards) {
    Bench bench("2026-03-08T09:00:00");
    bench.live({{"", 2, {1, 1}}, {"2026-03-10T09:00:00", 2, {1, 1}}});
    bench.goTo("2026-03-09T09:00:00");
    bench.run(60);
    bench.launch();
    bench.live({{"2026-03-11T09:00:00", 0, {1, 1}}});
}

TEST(StreakTest, TravellersLoseNoDayAndNoBreakCountsTwice) {
    Bench bench("2026-03-09T18:00:00", "Pacific/Honolulu");
    bench.take(2);
    bench.flyTo("Pacific/Kiritimati");  // the same evening is the 10th there
    // The breaks of Honolulu are used up.
    bench.live({{"", 0, {1, 1}}, {"", 1, {1, 1}}, {"", 1, {2, 2}}});
    bench.goTo("2026-03-11T09:00:00");
    bench.take(2);
    bench.flyTo("Pacific/Honolulu");  // back into the 10th, which has counted
    bench.live({{"", 0, {3, 3}},
                {"", 2, {3, 3}},
                {"2026-03-11T09:00:00", 0, {3, 3}},  // reached, if elsewhere
                {"2026-03-12T09:00:00", 2, {4, 4}}});
}

TEST(DayEndTest, IsToldOnceADayWithTheDaysFigures) {
    Bench bench("2026-03-09T08:00:00");
    bench.take(1);
    bench.take(1, Outcome::autoFadeOut);
    bench.take(1, Outcome::skipped);
    bench.goTo("2026-03-09T18:00:00");
    bench.announcer().dayEnded();
    bench.launch();
    bench.announcer().dayEnded();
    EXPECT_EQ(bench.announced, (Events{"2 of 2"}));
    EXPECT_EQ(bench.stored(kDayEnd), R"({"dateKey":"2026-03-09"})");
    bench.goTo("2026-03-10T18:00:00");
    bench.setUp([](SettingsModel& model) { model.notifyDayEnd = false; });
    bench.announcer().dayEnded();
    bench.setUp([](SettingsModel& model) { model.notifyDayEnd = true; });
    bench.announcer().dayEnded();
    EXPECT_EQ(bench.announced, (Events{"2 of 2", "0 of 2"}));
}

TEST(DayEndTest, ClockThatIsSetBackTellsNoDayTwiceAndOneThatWasAheadSilencesNone) {
    Bench bench("2026-03-09T18:00:00");
    for (const char* time : {"2026-03-09T18:00:00", "2026-03-10T18:00:00", "2026-03-09T18:00:00",
                             "2026-03-10T18:00:00", "2027-03-10T18:00:00", "2026-03-11T18:00:00"}) {
        bench.goTo(time);
        bench.announcer().dayEnded();
    }
    EXPECT_EQ(bench.announced.size(), 4U);
    EXPECT_EQ(bench.stored(kDayEnd), R"({"dateKey":"2026-03-11"})");
}

TEST(DayEndTest, NightsWorkIsOneDay) {
    Bench bench("2026-03-09T03:00:00");
    bench.setUp([](SettingsModel& model) {
        model.workHoursStartMinute = 1320;
        model.workHoursEndMinute = 360;
    });
    bench.take(4);  // of the night before
    bench.goTo("2026-03-09T22:30:00");
    bench.take(2);
    bench.goTo("2026-03-10T03:00:00");
    bench.take(1);
    bench.goTo("2026-03-10T09:00:00");
    bench.take(1);
    bench.announcer().dayEnded();
    EXPECT_EQ(bench.announced, (Events{"3 of 2"})) << "that of the morning is not of the night";
    EXPECT_EQ(bench.stored(kDayEnd), R"({"dateKey":"2026-03-09"})");
}

}  // namespace ostrel
