#pragma once

#include <cstdint>
#include <optional>
#include <set>

#include "base/clock.h"

namespace ostrel {

class Calendar;
struct SettingsModel;

// The part of the settings that says when the user works.
struct WindowShape {
    bool workHoursEnabled = false;
    std::int64_t workHoursStartMinute = 0;  // after local midnight
    std::int64_t workHoursEndMinute = 0;
    std::set<std::int64_t> workDays;  // 1 = Sunday to 7 = Saturday

    bool operator==(const WindowShape&) const = default;

    [[nodiscard]] static WindowShape of(const SettingsModel& settings);
};

// Whether `date` lies inside. A window from a minute to the same minute is the whole day; one that
// ends before it starts runs overnight and belongs to the day on which it starts.
[[nodiscard]] bool isWithin(WallTime date, const WindowShape& shape, const Calendar& calendar);

// The first instant after `now` at which isWithin() changes its answer, over clock changes and days
// left out. Absent where it does not for more than a week.
[[nodiscard]] std::optional<WallTime> nextBoundary(WallTime now, const WindowShape& shape,
                                                   const Calendar& calendar);

}  // namespace ostrel
