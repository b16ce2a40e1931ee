#include "platform/calendar/local_time.h"

#include <date/tz.h>

#include <charconv>
#include <exception>
#include <string_view>

namespace ostrel {
namespace {

const date::time_zone* findZone(const std::string& name) {
    try {
        return date::locate_zone(name);
    } catch (const std::exception&) {
        return nullptr;
    }
}

date::year_month_day dateOf(CalendarDay day) {
    return date::year{day.year} / day.month / day.day;
}

std::optional<int> parseNumber(std::string_view digits) {
    int number = 0;
    const char* end = digits.data() + digits.size();
    const auto [rest, failure] = std::from_chars(digits.data(), end, number);
    const bool isWhole = failure == std::errc{} && rest == end && number >= 0;
    return isWhole ? std::optional(number) : std::nullopt;
}

}  // namespace

bool isKnownTimeZone(const std::string& name) {
    return findZone(name) != nullptr;
}

std::optional<LocalTime> parseLocalTime(const std::string& text) {
    static constexpr std::string_view kForm = "0000-00-00T00:00:00";
    if (text.size() != kForm.size()) {
        return std::nullopt;
    }
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (kForm[i] != '0' && kForm[i] != text[i]) {
            return std::nullopt;
        }
    }
    const std::string_view view = text;
    const auto day = parseDayKey(view.substr(0, 10));
    const auto hour = parseNumber(view.substr(11, 2));
    const auto minute = parseNumber(view.substr(14, 2));
    const auto second = parseNumber(view.substr(17, 2));
    if (!day || !hour || !minute || !second || *hour > 23 || *minute > 59 || *second > 59) {
        return std::nullopt;
    }
    return LocalTime{*day, *hour, *minute, *second};
}

WallTime wallTimeOf(const LocalTime& time, const std::string& timeZone) {
    using std::chrono::seconds;
    const date::local_seconds local = date::local_days{dateOf(time.day)} +
                                      std::chrono::hours(time.hour) +
                                      std::chrono::minutes(time.minute) + seconds(time.second);
    const date::time_zone* zone = findZone(timeZone);
    const date::sys_seconds instant = zone ? zone->to_sys(local, date::choose::earliest)
                                           : date::sys_seconds{local.time_since_epoch()};
    return wallTimeAt(
        static_cast<double>(instant.time_since_epoch().count() - WallClock::kUnixOffsetSec));
}

}  // namespace ostrel
