#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "base/clock.h"
#include "base/day_key.h"

namespace ostrel {

// The user's Gregorian calendar in the user's current time zone, which may change at any time: the
// same calendar follows it.
class Calendar {
  public:
    struct Components {
        CalendarDay day;
        int weekday = 1;  // 1 = Sunday to 7 = Saturday
        int hour = 0;
        int minute = 0;
        int second = 0;
    };

    virtual ~Calendar() = default;

    [[nodiscard]] virtual Components components(WallTime time) const = 0;

    // The name of the day that `time` lies in.
    [[nodiscard]] std::string dayKeyOf(WallTime time) const { return dayKey(components(time).day); }

    // The first instant of the day that `time` lies in: not always 00:00, which some days lack and
    // some have twice (then the first counts).
    [[nodiscard]] virtual WallTime startOfDay(WallTime time) const = 0;

    // The first instant later than `after` at which the clock shows hour:minute:00, 0 <= hour <= 23
    // and 0 <= minute <= 59. Where the clock leaps over that time on a day, the instant it lands
    // on; where it shows that time twice, the first. Absent outside the calendar's years.
    [[nodiscard]] virtual std::optional<WallTime> nextMatching(WallTime after, int hour,
                                                               int minute) const = 0;

    // `time` moved by whole calendar days, with its time of day kept where that day has it. Absent
    // outside the calendar's years.
    [[nodiscard]] virtual std::optional<WallTime> addDays(WallTime time,
                                                          std::int64_t days) const = 0;

    // Whole calendar days from the day of `from` to the day of `to`; negative when that is earlier.
    [[nodiscard]] virtual std::int64_t daysBetween(WallTime from, WallTime to) const = 0;

    // Seconds to add to UTC at `time`.
    [[nodiscard]] virtual std::int64_t utcOffsetSec(WallTime time) const = 0;
};

}  // namespace ostrel
