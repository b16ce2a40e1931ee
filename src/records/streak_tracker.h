#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <set>
#include <vector>

#include "base/clock.h"
#include "base/published.h"
#include "core/settings/document.h"
#include "records/streak_record.h"

namespace ostrel {

class BreakLog;
class Calendar;
class DailyCounter;
class SettingsStore;
struct SettingsModel;

// Counts the days in a row on which as many breaks were taken as the daily goal asks for, and keeps
// them under "ostrel.streak.v1".
//
// Today counts as soon as it has reached the goal and breaks nothing until it is over. A day off
// (work hours are enabled and it is no work day) neither lengthens a streak nor breaks it. Days are
// judged by the goal and the days off of their own time: today at once, the days before when a new
// one begins or the program starts. Each break counts for one day only, also for somebody who
// travels across the date line. What was judged while the clock was ahead counts for nothing once
// it is right again, and a clock that was behind loses nothing.
class StreakTracker {
  public:
    // So many judged days are kept one by one: a wrong clock can be put right for about a year.
    static constexpr std::size_t kRecentDays = 400;
    // The log knows of nothing earlier.
    static constexpr std::int64_t kJudgedBackDays = 61;

    // What the tracker works with. All of it outlives the tracker.
    struct Services {
        PreferencesStore& preferences;
        const SettingsStore& settingsStore;
        const BreakLog& breakLog;
        const DailyCounter& dailyCounter;  // tells of a new day
        const Calendar& calendar;
        NowFunction now;
    };

    explicit StreakTracker(Services services);
    StreakTracker(const StreakTracker&) = delete;
    StreakTracker& operator=(const StreakTracker&) = delete;
    ~StreakTracker();

    [[nodiscard]] const Published<Streak>& streak() const { return streak_; }

  private:
    using JudgedDay = StreakRecord::JudgedDay;

    // The settings that days are judged by, as they were heard last.
    struct Rules {
        std::int64_t goal = 1;
        std::optional<std::set<std::int64_t>> workDays;  // absent: every day
    };
    [[nodiscard]] static Rules rulesOf(const SettingsModel& settings);

    void update();
    void judgeDaysBefore(CalendarDay today);
    void put(JudgedDay judged);
    [[nodiscard]] JudgedDay judge(CalendarDay day) const;
    [[nodiscard]] bool counts(const JudgedDay& judged, CalendarDay today) const;
    [[nodiscard]] bool isJudged(CalendarDay day, CalendarDay today) const;
    [[nodiscard]] bool isUsedElsewhere(WallTime breakAt, CalendarDay day) const;
    [[nodiscard]] std::optional<CalendarDay> firstKnownDay() const;
    [[nodiscard]] Streak streakOn(CalendarDay today) const;
    void foldOldDays();

    Services services_;
    Document<StreakRecord> document_;
    StreakRecord record_;
    StreakRecord stored_;
    Rules rules_;
    Published<Streak> streak_;
    std::vector<Subscription> observers_;
};

}  // namespace ostrel
