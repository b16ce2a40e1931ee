#include "records/streak_tracker.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "base/checked_seconds.h"
#include "core/settings/settings_store.h"
#include "platform/api/calendar.h"
#include "records/break_log.h"
#include "records/daily_counter.h"

namespace ostrel {
namespace {

using Verdict = StreakRecord::Verdict;
using JudgedDay = StreakRecord::JudgedDay;

constexpr std::int64_t kLongestStreakDays = 9999 * 366;  // the years of the calendar

std::int64_t extended(std::int64_t days, Verdict verdict) {
    switch (verdict) {
        case Verdict::reached:
            return addSec(days, 1);
        case Verdict::missed:
            return 0;
        case Verdict::free:
            break;
    }
    return days;
}

Streak streakOf(const StreakRecord& record) {
    Streak streak{record.earlierDays, std::max(record.longestDays, record.earlierDays)};
    for (const JudgedDay& judged : record.recent) {
        streak.currentDays = extended(streak.currentDays, judged.verdict);
        streak.longestDays = std::max(streak.longestDays, streak.currentDays);
    }
    return streak;
}

WallTime justAfter(WallTime time) {
    return wallTimeAt(std::nextafter(secondsSinceReference(time), HUGE_VAL));
}

}  // namespace

bool StreakRecord::isSound() const {
    const auto isLength = [](std::int64_t days) { return days >= 0 && days <= kLongestStreakDays; };
    const auto isOutOfOrder = [](const JudgedDay& a, const JudgedDay& b) { return a.day >= b.day; };
    return isLength(earlierDays) && isLength(longestDays) &&
           std::ranges::adjacent_find(recent, isOutOfOrder) == recent.end();
}

StreakTracker::StreakTracker(Services services)
    : services_(std::move(services)),
      document_(services_.preferences, "ostrel.streak.v1"),
      record_(document_.load().value_or(StreakRecord{})),
      stored_(record_) {
    update();
    observers_.push_back(services_.breakLog.entries().onChange([this](const auto&) { update(); }));
    observers_.push_back(
        services_.dailyCounter.model().onChange([this](const auto&) { update(); }));
    observers_.push_back(
        services_.settingsStore.settings().onChange([this](const auto&) { update(); }));
}

StreakTracker::~StreakTracker() = default;

void StreakTracker::update() {
    const CalendarDay today = services_.calendar.components(services_.now()).day;
    dropFutureDays(today);
    judgeDaysBefore(today);
    if (!isJudged(today) && !isFree(today)) {
        if (const auto lastBreakAt = reachedBy(today)) {
            judge(today, Verdict::reached, lastBreakAt);
        }
    }
    foldOldDays();
    if (record_ != stored_) {
        stored_ = record_;
        document_.save(record_);
    }
    streak_.set(streakOf(record_));
}

// Judged while the clock was ahead. Whoever flew west may really have been in tomorrow: what was
// reached there stays.
void StreakTracker::dropFutureDays(CalendarDay today) {
    const CalendarDay tomorrow = addDays(today, 1);
    std::erase_if(record_.recent, [&](const JudgedDay& judged) {
        const bool isTooEarly =
            judged.day > tomorrow || (judged.day >= today && judged.verdict != Verdict::reached);
        return isTooEarly;
    });
}

void StreakTracker::judgeDaysBefore(CalendarDay today) {
    auto day = firstUnjudgedDay(today);
    if (!day) {
        return;
    }
    // The log knows of nothing earlier, and a week holds a work day or there is none at all.
    const CalendarDay earliest = addDays(today, -kRecentDays);
    for (day = std::max(*day, earliest); *day < today; day = addDays(*day, 1)) {
        if (isFree(*day)) {
            judge(*day, Verdict::free);
        } else {
            const auto lastBreakAt = reachedBy(*day);
            judge(*day, lastBreakAt ? Verdict::reached : Verdict::missed, lastBreakAt);
        }
    }
}

// Without a record the history is as long as the log.
std::optional<CalendarDay> StreakTracker::firstUnjudgedDay(CalendarDay today) const {
    for (auto last = record_.recent.rbegin(); last != record_.recent.rend(); ++last) {
        if (last->day < today) {
            return addDays(last->day, 1);
        }
    }
    if (record_.earlierThrough) {
        return addDays(*record_.earlierThrough, 1);
    }
    const auto& entries = *services_.breakLog.entries();
    const auto oldest = std::ranges::min_element(entries, {}, &BreakLogEntry::endedAt);
    return oldest == entries.end()
               ? std::nullopt
               : std::optional(services_.calendar.components(oldest->endedAt).day);
}

void StreakTracker::judge(CalendarDay day, Verdict verdict, std::optional<WallTime> lastBreakAt) {
    const auto place = std::ranges::upper_bound(record_.recent, day, {}, &JudgedDay::day);
    record_.recent.insert(place, {day, verdict, lastBreakAt});
}

bool StreakTracker::isJudged(CalendarDay day) const {
    return (record_.earlierThrough && day <= *record_.earlierThrough) ||
           std::ranges::find(record_.recent, day, &JudgedDay::day) != record_.recent.end();
}

bool StreakTracker::isFree(CalendarDay day) const {
    const SettingsModel& settings = *services_.settingsStore.settings();
    return settings.workHoursEnabled && !settings.workDays.contains(weekdayOf(day));
}

std::optional<WallTime> StreakTracker::reachedBy(CalendarDay day) const {
    const Calendar& calendar = services_.calendar;
    const WallTime now = services_.now();
    const std::int64_t ahead = daysBetween(calendar.components(now).day, day);
    const auto onDay = calendar.addDays(now, ahead);
    const auto onNextDay = calendar.addDays(now, ahead + 1);
    // A zone may have left the day out.
    if (!onDay || !onNextDay || calendar.components(*onDay).day != day) {
        return std::nullopt;
    }
    WallTime from = calendar.startOfDay(*onDay);
    for (const JudgedDay& judged : record_.recent) {
        if (judged.day < day && judged.lastBreakAt) {
            from = std::max(from, justAfter(*judged.lastBreakAt));
        }
    }
    const auto taken = services_.breakLog.takenBetween(from, calendar.startOfDay(*onNextDay));
    const std::int64_t goal =
        std::max<std::int64_t>(services_.settingsStore.settings()->dailyGoalBreaks, 1);
    return taken.count >= goal ? std::optional(taken.lastEndedAt) : std::nullopt;
}

void StreakTracker::foldOldDays() {
    record_.longestDays = streakOf(record_).longestDays;
    while (std::ssize(record_.recent) > kRecentDays) {
        record_.earlierDays = extended(record_.earlierDays, record_.recent.front().verdict);
        record_.earlierThrough = record_.recent.front().day;
        record_.recent.erase(record_.recent.begin());
    }
}

}  // namespace ostrel
