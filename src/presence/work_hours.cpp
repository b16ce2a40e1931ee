#include "presence/work_hours.h"

#include <algorithm>
#include <cmath>

#include "base/checked_seconds.h"
#include "core/settings/settings_model.h"
#include "platform/api/calendar.h"

namespace ostrel {
namespace {

constexpr std::int64_t kMinutesPerHour = 60;
constexpr std::int64_t kMinutesPerDay = 1440;
constexpr int kDaysPerWeek = 7;
// A work day that the zone left out makes the wait longer than a week.
constexpr WallClock::duration kHorizon = std::chrono::hours(24 * 9);
constexpr WallClock::duration kMinute = std::chrono::minutes(1);

bool isSplitByAClockChange(WallTime from, WallTime to, const Calendar& calendar) {
    return calendar.utcOffsetSec(from) != calendar.utcOffsetSec(to);
}

// The next instant after `after` at which the clock shows that minute; one that no day has never
// comes.
std::optional<WallTime> nextAt(WallTime after, std::int64_t minute, const Calendar& calendar) {
    if (minute < 0 || minute >= kMinutesPerDay) {
        return std::nullopt;
    }
    return calendar.nextMatching(after, static_cast<int>(minute / kMinutesPerHour),
                                 static_cast<int>(minute % kMinutesPerHour));
}

// Where the answer can change while the clock runs evenly: at midnight, at the start, at the end.
std::optional<WallTime> nextCandidate(WallTime after, const WindowShape& shape,
                                      const Calendar& calendar) {
    std::optional<WallTime> first;
    for (const std::int64_t minute :
         {std::int64_t{0}, shape.workHoursStartMinute, shape.workHoursEndMinute}) {
        const auto next = nextAt(after, minute, calendar);
        if (next && (!first || *next < *first)) {
            first = next;
        }
    }
    return first;
}

WallTime nextFullMinute(WallTime after, const Calendar& calendar) {
    const WallTime second{WallClock::duration{std::floor(secondsSinceReference(after))}};
    return second + kMinute - wallSec(calendar.components(second).second);
}

// Across a change of the clock every minute is looked at. Clocks change at full minutes.
std::optional<WallTime> firstChangeIn(WallTime from, WallTime to, const WindowShape& shape,
                                      const Calendar& calendar) {
    const bool before = isWithin(from, shape, calendar);
    for (WallTime minute = nextFullMinute(from, calendar); minute < to; minute += kMinute) {
        if (isWithin(minute, shape, calendar) != before) {
            return minute;
        }
    }
    return std::nullopt;
}

}  // namespace

WindowShape WindowShape::of(const SettingsModel& settings) {
    return {settings.workHoursEnabled, settings.workHoursStartMinute, settings.workHoursEndMinute,
            settings.workDays};
}

bool isWithin(WallTime date, const WindowShape& shape, const Calendar& calendar) {
    if (!shape.workHoursEnabled) {
        return true;
    }
    const Calendar::Components local = calendar.components(date);
    const std::int64_t minute =
        addSec(multiplySec(local.hour, kMinutesPerHour), std::int64_t{local.minute});
    const std::int64_t start = shape.workHoursStartMinute;
    const std::int64_t end = shape.workHoursEndMinute;
    const bool worksToday = shape.workDays.contains(local.weekday);
    if (start == end) {
        return worksToday;
    }
    if (start < end) {
        return start <= minute && minute < end && worksToday;
    }
    if (minute >= start) {
        return worksToday;
    }
    const int previousWeekday = local.weekday == 1 ? kDaysPerWeek : local.weekday - 1;
    return minute < end && shape.workDays.contains(previousWeekday);
}

std::optional<WallTime> nextBoundary(WallTime now, const WindowShape& shape,
                                     const Calendar& calendar) {
    if (!shape.workHoursEnabled) {
        return std::nullopt;
    }
    const bool before = isWithin(now, shape, calendar);
    WallTime from = now;
    while (from - now < kHorizon) {
        const auto to = nextCandidate(from, shape, calendar);
        if (!to) {
            return std::nullopt;
        }
        if (isSplitByAClockChange(from, *to, calendar)) {
            if (const auto change = firstChangeIn(from, *to, shape, calendar)) {
                return change;
            }
        }
        if (isWithin(*to, shape, calendar) != before) {
            return to;
        }
        from = *to;
    }
    return std::nullopt;
}

}  // namespace ostrel
