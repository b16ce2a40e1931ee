#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace ostrel {

// A day of the Gregorian calendar, without a time zone.
struct CalendarDay {
    int year = 2001;
    int month = 1;  // 1 to 12
    int day = 1;    // 1 to 31

    // The comparison with zero that the check complains of is the compiler's own.
    auto operator<=>(const CalendarDay&) const = default;  // NOLINT(modernize-use-nullptr)
};

// "yyyy-MM-dd" in Western digits, whatever the locale: names a day in every per-day record. Keys of
// years 0 to 9999 sort by date.
[[nodiscard]] std::string dayKey(CalendarDay day);

// Reads a day key of the years 1 to 9999; absent for anything else and for days that no year has.
[[nodiscard]] std::optional<CalendarDay> parseDayKey(std::string_view key);

[[nodiscard]] CalendarDay addDays(CalendarDay day, std::int64_t count);

// Negative when `to` is earlier.
[[nodiscard]] std::int64_t daysBetween(CalendarDay from, CalendarDay to);

// 1 = Sunday to 7 = Saturday.
[[nodiscard]] int weekdayOf(CalendarDay day);

}  // namespace ostrel
