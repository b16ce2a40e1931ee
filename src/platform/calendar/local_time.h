#pragma once

#include <optional>
#include <string>

#include "base/clock.h"
#include "base/day_key.h"

namespace ostrel {

// A date and time of day as a clock on the wall shows it.
struct LocalTime {
    CalendarDay day;
    int hour = 0;
    int minute = 0;
    int second = 0;
};

[[nodiscard]] bool isKnownTimeZone(const std::string& name);

// "2026-03-09T09:00:00", without an offset. Absent for anything else and for days that no year has.
[[nodiscard]] std::optional<LocalTime> parseLocalTime(const std::string& text);

// The first instant at which clocks in that zone show `time`, or the instant that they land on when
// they leap over it. An unknown zone counts as UTC.
[[nodiscard]] WallTime wallTimeOf(const LocalTime& time, const std::string& timeZone);

}  // namespace ostrel
