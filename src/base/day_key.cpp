#include "base/day_key.h"

#include <array>
#include <charconv>
#include <chrono>
#include <cstddef>
#include <cstdio>

namespace ostrel {
namespace {

std::chrono::year_month_day dateOf(CalendarDay day) {
    return {std::chrono::year{day.year}, std::chrono::month{static_cast<unsigned>(day.month)},
            std::chrono::day{static_cast<unsigned>(day.day)}};
}

}  // namespace

std::string dayKey(CalendarDay day) {
    std::array<char, 40> text{};
    const int length =
        std::snprintf(text.data(), text.size(), "%04d-%02d-%02d", day.year, day.month, day.day);
    return {text.data(), static_cast<std::size_t>(length)};
}

std::optional<CalendarDay> parseDayKey(std::string_view key) {
    static constexpr std::string_view kForm = "0000-00-00";
    if (key.size() != kForm.size()) {
        return std::nullopt;
    }
    for (std::size_t i = 0; i < key.size(); ++i) {
        const bool isDigit = key[i] >= '0' && key[i] <= '9';
        if (kForm[i] == '-' ? key[i] != '-' : !isDigit) {
            return std::nullopt;
        }
    }
    const auto number = [key](std::size_t from, std::size_t length) {
        int value = 0;
        std::from_chars(key.data() + from, key.data() + from + length, value);
        return value;
    };
    const CalendarDay day{number(0, 4), number(5, 2), number(8, 2)};
    return day.year >= 1 && dateOf(day).ok() ? std::optional(day) : std::nullopt;
}

CalendarDay addDays(CalendarDay day, std::int64_t count) {
    const std::chrono::year_month_day moved{std::chrono::sys_days{dateOf(day)} +
                                            std::chrono::days{count}};
    return {static_cast<int>(moved.year()), static_cast<int>(static_cast<unsigned>(moved.month())),
            static_cast<int>(static_cast<unsigned>(moved.day()))};
}

std::int64_t daysBetween(CalendarDay from, CalendarDay to) {
    return (std::chrono::sys_days{dateOf(to)} - std::chrono::sys_days{dateOf(from)}).count();
}

int weekdayOf(CalendarDay day) {
    return static_cast<int>(std::chrono::weekday{std::chrono::sys_days{dateOf(day)}}.c_encoding()) +
           1;
}

}  // namespace ostrel
