#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <utility>

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
    void workMondayToFriday() {
        setUp([](SettingsModel& model) { model.workHoursEnabled = true; });
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
    bench.take(1);
    bench.take(3, Outcome::skipped);
    EXPECT_EQ(bench.streak(), (Streak{0, 0}));
    bench.take(1, Outcome::autoFadeOut);
    EXPECT_EQ(bench.streak(), (Streak{1, 1})) << "today counts once it has reached the goal";
    bench.take(5);
    EXPECT_EQ(bench.streak(), (Streak{1, 1}));
    bench.goTo("2026-03-10T08:00:00");
    bench.take(1);
    EXPECT_EQ(bench.streak(), (Streak{1, 1})) << "today breaks nothing until it is over";
    bench.take(1);
    EXPECT_EQ(bench.streak(), (Streak{2, 2}));
    bench.goTo("2026-03-11T23:59:00");
    EXPECT_EQ(bench.streak(), (Streak{2, 2}));
    bench.run(60);
    EXPECT_EQ(bench.streak(), (Streak{0, 2})) << "midnight came and the goal was not reached";
    bench.take(2);
    bench.launch();
    EXPECT_EQ(bench.streak(), (Streak{1, 2}));
}

TEST(StreakTest, GoalIsTakenAsItWasOnTheDay) {
    Bench bench;
    bench.take(2);
    bench.setGoal(5);
    EXPECT_EQ(bench.streak().currentDays, 1) << "a day that counts stays";
    bench.goTo("2026-03-10T08:00:00");
    bench.take(3);
    EXPECT_EQ(bench.streak().currentDays, 1);
    bench.goTo("2026-03-11T08:00:00");
    bench.setGoal(3);
    EXPECT_EQ(bench.streak().currentDays, 0) << "yesterday's goal was 5";
    bench.take(2);
    bench.setGoal(2);
    EXPECT_EQ(bench.streak().currentDays, 1) << "today's may still be lowered";
}

TEST(StreakTest, DaysOffNeitherBreakNorLengthen) {
    Bench bench("2026-03-12T09:00:00");  // a Thursday
    bench.workMondayToFriday();
    bench.take(2);
    bench.goTo("2026-03-13T09:00:00");
    bench.take(2);
    bench.goTo("2026-03-14T09:00:00");
    bench.take(2);
    EXPECT_EQ(bench.streak(), (Streak{2, 2}));
    bench.goTo("2026-03-16T09:00:00");
    EXPECT_EQ(bench.streak(), (Streak{2, 2}));
    bench.setUp([](SettingsModel& model) { model.workHoursEnabled = false; });
    EXPECT_EQ(bench.streak(), (Streak{2, 2})) << "the days off of last week stay days off";
    bench.take(2);
    EXPECT_EQ(bench.streak(), (Streak{3, 3}));
    bench.launch();
    bench.goTo("2026-03-23T09:00:00");
    EXPECT_EQ(bench.streak(), (Streak{0, 3}));
}

TEST(StreakTest, OutlivesTheLog) {
    Bench bench;
    for (CalendarDay day{2026, 3, 9}; day < CalendarDay{2026, 6, 30}; day = addDays(day, 1)) {
        bench.goTo((dayKey(day) + "T10:00:00").c_str());
        bench.take(2);
    }
    EXPECT_EQ(bench.streak(), (Streak{113, 113}));
    bench.launch();
    EXPECT_EQ(bench.streak(), (Streak{113, 113}));
    bench.goTo("2026-07-02T10:00:00");
    EXPECT_EQ(bench.streak(), (Streak{0, 113}));
    bench.goTo("2027-07-02T10:00:00");
    bench.take(2);
    EXPECT_EQ(bench.streak(), (Streak{1, 113}));
}

TEST(StreakTest, WithoutARecordTheLogIsTheHistory) {
    for (const char* bytes : {R"({"earlierDays":-5,"longestDays":0,"recent":[]})",
                              R"({"earlierDays":9223372036854775807,"longestDays":0,"recent":[]})",
                              R"({"longestDays":7,"recent":[]})"}) {
        Bench bench;
        bench.take(2);
        bench.goTo("2026-03-10T10:00:00");
        bench.take(2);
        bench.preferences.write(kStreak, bytes);
        bench.launch();
        EXPECT_EQ(bench.streak(), (Streak{2, 2})) << bytes;
        EXPECT_EQ(bench.preferences.damaged().find(kStreak)->second, bytes);
        const std::string stored = bench.stored(kStreak);
        bench.launch();
        EXPECT_EQ(bench.streak(), (Streak{2, 2}));
        EXPECT_EQ(bench.stored(kStreak), stored);
    }
}

TEST(StreakTest, ClockThatWasAheadCostsNothing) {
    for (const char* ahead : {"2026-03-11T09:00:00", "2026-03-20T09:00:00", "2026-05-01T09:00:00",
                              "2031-01-01T09:00:00"}) {
        Bench bench("2026-03-07T09:00:00");
        bench.take(2);
        bench.goTo("2026-03-08T09:00:00");
        bench.take(2);
        bench.goTo("2026-03-09T09:00:00");
        bench.goTo(ahead);
        EXPECT_EQ(bench.streak(), (Streak{0, 2})) << ahead;
        bench.goTo("2026-03-09T10:00:00");
        EXPECT_EQ(bench.streak(), (Streak{2, 2})) << ahead;
        bench.take(2);
        EXPECT_EQ(bench.streak(), (Streak{3, 3})) << ahead;
        bench.goTo("2026-03-10T10:00:00");
        bench.take(2);
        EXPECT_EQ(bench.streak(), (Streak{4, 4})) << ahead;
    }
}

TEST(StreakTest, ClockThatWasBehindLosesNothingAndChangesNoVerdict) {
    Bench bench("2026-03-06T09:00:00");
    for (const char* day : {"2026-03-06T09:00:00", "2026-03-07T09:00:00", "2026-03-08T09:00:00"}) {
        bench.goTo(day);
        bench.take(2);
    }
    bench.goTo("2026-03-09T09:00:00");
    bench.setGoal(5);
    for (const char* behind : {"2026-03-05T09:00:00", "2001-01-01T00:00:00"}) {
        bench.goTo(behind);
        bench.run(3600);
        bench.launch();
        bench.goTo("2026-03-09T10:00:00");
        EXPECT_EQ(bench.streak(), (Streak{3, 3})) << behind;
    }
    bench.goTo("2026-03-12T09:00:00");
    bench.setGoal(1);
    bench.goTo("2026-03-08T09:00:00");
    bench.goTo("2026-03-12T10:00:00");
    EXPECT_EQ(bench.streak(), (Streak{0, 3})) << "missed days stay missed under another goal";
}

TEST(StreakTest, DayThatWasLeftOutWhileTheClockWasWrongIsJudgedAfterwards) {
    Bench bench("2026-03-08T09:00:00");
    bench.take(2);
    bench.goTo("2026-03-10T09:00:00");
    bench.take(2);
    bench.goTo("2026-03-09T09:00:00");
    bench.run(60);
    bench.launch();
    bench.goTo("2026-03-11T09:00:00");
    EXPECT_EQ(bench.streak(), (Streak{1, 1}));
}

TEST(StreakTest, TravellersLoseNoDayAndNoBreakCountsTwice) {
    Bench bench("2026-03-09T18:00:00", "Pacific/Honolulu");
    bench.take(2);
    bench.flyTo("Pacific/Kiritimati");  // the same evening is the 10th there
    EXPECT_EQ(bench.streak(), (Streak{1, 1}));
    bench.take(1);
    EXPECT_EQ(bench.streak(), (Streak{1, 1})) << "those of Honolulu are used up";
    bench.take(1);
    EXPECT_EQ(bench.streak(), (Streak{2, 2}));
    bench.goTo("2026-03-11T09:00:00");
    bench.take(2);
    bench.flyTo("Pacific/Honolulu");  // back into the 10th, which has counted
    EXPECT_EQ(bench.streak(), (Streak{3, 3})) << "the 11th was reached, if elsewhere";
    bench.take(2);
    EXPECT_EQ(bench.streak(), (Streak{3, 3}));
    bench.goTo("2026-03-11T09:00:00");
    EXPECT_EQ(bench.streak(), (Streak{3, 3}));
    bench.goTo("2026-03-12T09:00:00");
    bench.take(2);
    EXPECT_EQ(bench.streak(), (Streak{4, 4}));
}

TEST(DayEndTest, IsToldOnceADayWithTheDaysFigures) {
    Bench bench("2026-03-09T08:00:00");
    bench.take(1);
    bench.take(1, Outcome::autoFadeOut);
    bench.take(1, Outcome::skipped);
    bench.goTo("2026-03-09T18:00:00");
    bench.announcer().dayEnded();
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

TEST(DayEndTest, EndNoticedOnTheNextMorningBelongsToTheDayBefore) {
    Bench bench("2026-03-09T10:00:00");
    bench.take(3);
    bench.goTo("2026-03-10T07:00:00");
    bench.announcer().dayEnded();
    EXPECT_EQ(bench.announced, (Events{"3 of 2"}));
    EXPECT_EQ(bench.stored(kDayEnd), R"({"dateKey":"2026-03-09"})");
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
