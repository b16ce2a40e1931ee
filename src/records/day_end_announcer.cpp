#include "records/day_end_announcer.h"

#include <optional>
#include <utility>

#include "core/settings/settings_store.h"
#include "platform/api/calendar.h"
#include "records/break_log.h"

namespace ostrel {
namespace {

constexpr std::int64_t kMinutesPerHour = 60;
constexpr std::int64_t kMinutesPerDay = 1440;
constexpr int kDaysPerWeek = 7;
constexpr int kMarkerAheadDays = 2;
// Work hours that are edited may end up to so much later than they are said to.
constexpr std::int64_t kSlackSec = 3600;

// Breaks that end in [from, to) belong to the day.
struct WorkDay {
    WallTime from;
    WallTime to;
    WallTime endsAt;  // its work hours
};

// A document edited by hand may hold a minute that no day has.
std::int64_t minuteOfDay(std::int64_t minute, std::int64_t otherwise) {
    return minute >= 0 && minute < kMinutesPerDay ? minute : otherwise;
}

std::optional<WallTime> timeOn(WallTime midnight, std::int64_t minute, const Calendar& calendar) {
    return calendar.nextMatching(midnight - wallSec(1), static_cast<int>(minute / kMinutesPerHour),
                                 static_cast<int>(minute % kMinutesPerHour));
}

std::optional<WorkDay> workDayOf(WallTime midnight, const SettingsModel& settings,
                                 const Calendar& calendar) {
    const auto onNextDay = calendar.addDays(midnight, 1);
    if (!onNextDay) {
        return std::nullopt;
    }
    const WallTime nextMidnight = calendar.startOfDay(*onNextDay);
    const std::int64_t start =
        minuteOfDay(settings.workHoursStartMinute, WorkHoursDefaults::kStartMinute);
    const std::int64_t end = minuteOfDay(settings.workHoursEndMinute, 0);
    if (start == end || end == 0) {
        return WorkDay{midnight, nextMidnight, nextMidnight};
    }
    const bool isOvernight = start > end;
    const auto began = timeOn(midnight, start, calendar);
    const auto ended = timeOn(isOvernight ? nextMidnight : midnight, end, calendar);
    if (!began || !ended) {
        return std::nullopt;
    }
    return isOvernight ? WorkDay{*began, *ended, *ended} : WorkDay{midnight, nextMidnight, *ended};
}

// The latest work day whose hours are over.
std::optional<WorkDay> workDayThatEnded(const SettingsModel& settings, const Calendar& calendar,
                                        WallTime now) {
    std::optional<WallTime> day = now;
    for (int i = 0; i <= kDaysPerWeek && day; ++i) {
        const WallTime midnight = calendar.startOfDay(*day);
        const auto workDay = workDayOf(midnight, settings, calendar);
        if (workDay && workDay->endsAt <= now + wallSec(kSlackSec) &&
            settings.workDays.contains(calendar.components(midnight).weekday)) {
            return workDay;
        }
        day = calendar.addDays(midnight, -1);
    }
    return std::nullopt;
}

}  // namespace

DayEndAnnouncer::DayEndAnnouncer(Services services)
    : services_(std::move(services)),
      document_(services_.preferences, "ostrel.dayEnd.v1"),
      announced_(document_.load().value_or(Marker{})) {}

void DayEndAnnouncer::dayEnded() {
    const SettingsModel& settings = *services_.settingsStore.settings();
    if (!settings.notifyDayEnd || !services_.notificationCenter) {
        return;
    }
    const WallTime now = services_.now();
    const auto day = workDayThatEnded(settings, services_.calendar, now);
    if (!day) {
        return;
    }
    std::string key = services_.calendar.dayKeyOf(day->from);
    // A marker from further ahead was left by a clock that was.
    const CalendarDay soon = addDays(services_.calendar.components(now).day, kMarkerAheadDays);
    if (key <= announced_.dateKey && announced_.dateKey <= dayKey(soon)) {
        return;
    }
    announced_.dateKey = std::move(key);
    document_.save(announced_);
    services_.notificationCenter->postDayEnd(services_.breakLog.takenBetween(day->from, day->to),
                                             settings.dailyGoalBreaks);
}

}  // namespace ostrel
