#pragma once

#include <cstdint>
#include <optional>
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

// Counts the days in a row on which as many breaks were taken as the daily goal asks for, and keeps
// them under "ostrel.streak.v1".
//
// Today counts as soon as it has reached the goal and breaks nothing until it is over. A day off
// (work hours are enabled and it is no work day) neither lengthens a streak nor breaks it. Days are
// judged by the goal and the days off of their own time: today at once, the days before when a new
// one begins or the program starts. Each break counts for one day only, also for somebody who
// travels into tomorrow.
class StreakTracker {
  public:
    static constexpr std::int64_t kRecentDays = 61;

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
    void update();
    void dropFutureDays(CalendarDay today);
    void judgeDaysBefore(CalendarDay today);
    void judge(CalendarDay day, StreakRecord::Verdict verdict,
               std::optional<WallTime> lastBreakAt = std::nullopt);
    [[nodiscard]] std::optional<CalendarDay> firstUnjudgedDay(CalendarDay today) const;
    [[nodiscard]] bool isJudged(CalendarDay day) const;
    [[nodiscard]] bool isFree(CalendarDay day) const;
    // When the last break of a day that has reached the goal ended.
    [[nodiscard]] std::optional<WallTime> reachedBy(CalendarDay day) const;
    void foldOldDays();

    Services services_;
    Document<StreakRecord> document_;
    StreakRecord record_;
    StreakRecord stored_;
    Published<Streak> streak_;
    std::vector<Subscription> observers_;
};

}  // namespace ostrel
