#include "records/streak_tracker.h"

#include <algorithm>
#include <utility>

#include "core/settings/settings_store.h"
#include "platform/api/calendar.h"
#include "records/break_log.h"
#include "records/daily_counter.h"

namespace ostrel {
namespace {

using Verdict = StreakRecord::Verdict;

constexpr std::int64_t kLongestStreakDays = 9999LL * 366;  // the years of the calendar
// Further ahead than the clock is put right by in the course of things.
constexpr std::int64_t kFutureSec = 86'400;

std::int64_t extended(std::int64_t days, Verdict verdict) {
    switch (verdict) {
        case Verdict::reached:
            return std::min(days + 1, kLongestStreakDays);
        case Verdict::missed:
            return 0;
        case Verdict::free:
            break;
    }
    return days;
}

}  // namespace

bool StreakRecord::isSound() const {
    const auto isLength = [](std::int64_t days) { return days >= 0 && days <= kLongestStreakDays; };
    const auto isOutOfOrder = [](const JudgedDay& a, const JudgedDay& b) { return a.day >= b.day; };
    return isLength(earlierDays) && isLength(longestDays) &&
           std::ranges::adjacent_find(recent, isOutOfOrder) == recent.end();
}

StreakTracker::Rules StreakTracker::rulesOf(const SettingsModel& settings) {
    Rules rules{std::max<std::int64_t>(settings.dailyGoalBreaks, 1), std::nullopt};
    if (settings.workHoursEnabled) {
        rules.workDays = settings.workDays;
    }
    return rules;
}

StreakTracker::StreakTracker(Services services)
    : services_(std::move(services)),
      document_(services_.preferences, "ostrel.streak.v1"),
      record_(document_.load().value_or(StreakRecord{})),
      stored_(record_),
      rules_(rulesOf(*services_.settingsStore.settings())) {
    update();
    observers_.push_back(services_.breakLog.entries().onChange([this](const auto&) { update(); }));
    observers_.push_back(
        services_.dailyCounter.model().onChange([this](const auto&) { update(); }));
    // A day that has just ended is judged by the rules that it had.
    observers_.push_back(
        services_.settingsStore.settings().onChange([this](const SettingsModel& settings) {
            update();
            rules_ = rulesOf(settings);
            update();
        }));
}

StreakTracker::~StreakTracker() = default;

void StreakTracker::update() {
    const CalendarDay today = services_.calendar.components(services_.now()).day;
    judgeDaysBefore(today);
    if (!isJudged(today, today)) {
        if (JudgedDay judged = judge(today); judged.verdict == Verdict::reached) {
            put(judged);
        }
    }
    const Streak streak = streakOn(today);
    record_.longestDays = streak.longestDays;
    foldOldDays();
    if (record_ != stored_ && document_.save(record_)) {
        stored_ = record_;
    }
    streak_.set(streak);
}

void StreakTracker::judgeDaysBefore(CalendarDay today) {
    const auto first = firstKnownDay();
    if (!first) {
        return;
    }
    for (CalendarDay day = std::max(*first, addDays(today, -kJudgedBackDays)); day < today;
         day = addDays(day, 1)) {
        if (!isJudged(day, today)) {
            put(judge(day));
        }
    }
}

// Without a record the history is as long as the log.
std::optional<CalendarDay> StreakTracker::firstKnownDay() const {
    if (!record_.recent.empty()) {
        return record_.recent.front().day;
    }
    const auto& entries = *services_.breakLog.entries();
    const auto oldest = std::ranges::min_element(entries, {}, &BreakLogEntry::endedAt);
    return oldest == entries.end()
               ? std::nullopt
               : std::optional(services_.calendar.components(oldest->endedAt).day);
}

void StreakTracker::put(JudgedDay judged) {
    auto& recent = record_.recent;
    const auto place = std::ranges::lower_bound(recent, judged.day, {}, &JudgedDay::day);
    if (place != recent.end() && place->day == judged.day) {
        *place = judged;
    } else {
        recent.insert(place, judged);
    }
}

// What a clock that was ahead left behind does not. Whoever flew west may really have been in
// tomorrow: what was reached there does.
bool StreakTracker::counts(const JudgedDay& judged, CalendarDay today) const {
    const bool isFromTheFuture = judged.judgedAt > services_.now() + wallSec(kFutureSec);
    return !isFromTheFuture && (judged.day < today || judged.verdict == Verdict::reached);
}

bool StreakTracker::isJudged(CalendarDay day, CalendarDay today) const {
    const auto found = std::ranges::lower_bound(record_.recent, day, {}, &JudgedDay::day);
    return found != record_.recent.end() && found->day == day && counts(*found, today);
}

bool StreakTracker::isUsedElsewhere(WallTime breakAt, CalendarDay day) const {
    return std::ranges::any_of(record_.recent, [&](const JudgedDay& judged) {
        return judged.day != day && judged.firstBreakAt && judged.lastBreakAt &&
               breakAt >= *judged.firstBreakAt && breakAt <= *judged.lastBreakAt;
    });
}

StreakTracker::JudgedDay StreakTracker::judge(CalendarDay day) const {
    const Calendar& calendar = services_.calendar;
    const WallTime now = services_.now();
    JudgedDay judged{day, Verdict::missed, now, std::nullopt, std::nullopt};
    const std::int64_t ahead = daysBetween(calendar.components(now).day, day);
    const auto onDay = calendar.addDays(now, ahead);
    const auto onNextDay = calendar.addDays(now, ahead + 1);
    // A day that the zone left out was nobody's.
    const bool exists = onDay && onNextDay && calendar.components(*onDay).day == day;
    if (!exists || (rules_.workDays && !rules_.workDays->contains(weekdayOf(day)))) {
        judged.verdict = Verdict::free;
        return judged;
    }
    const WallTime from = calendar.startOfDay(*onDay);
    const WallTime to = calendar.startOfDay(*onNextDay);
    std::vector<WallTime> taken;
    for (const BreakLogEntry& entry : *services_.breakLog.entries()) {
        if (entry.isTaken() && entry.endedAt >= from && entry.endedAt < to &&
            !isUsedElsewhere(entry.endedAt, day)) {
            taken.push_back(entry.endedAt);
        }
    }
    if (std::ssize(taken) >= rules_.goal) {
        judged.verdict = Verdict::reached;
        judged.firstBreakAt = std::ranges::min(taken);
        judged.lastBreakAt = std::ranges::max(taken);
    }
    return judged;
}

Streak StreakTracker::streakOn(CalendarDay today) const {
    Streak streak{record_.earlierDays, std::max(record_.longestDays, record_.earlierDays)};
    std::optional<CalendarDay> last;
    for (const JudgedDay& judged : record_.recent) {
        if (!counts(judged, today)) {
            continue;
        }
        // Days that nobody judged were days without the program.
        if (last && daysBetween(*last, judged.day) > 1 && judged.day < today) {
            streak.currentDays = 0;
        }
        last = judged.day;
        streak.currentDays = extended(streak.currentDays, judged.verdict);
        streak.longestDays = std::max(streak.longestDays, streak.currentDays);
    }
    return streak;
}

void StreakTracker::foldOldDays() {
    auto& recent = record_.recent;
    while (recent.size() > kRecentDays) {
        record_.earlierDays = extended(record_.earlierDays, recent.front().verdict);
        recent.erase(recent.begin());
    }
}

}  // namespace ostrel
