#include "platform/calendar/zoned_calendar.h"

#include <date/tz.h>

#include <algorithm>
#include <cmath>
#include <exception>
#include <utility>

namespace ostrel {
namespace {

using date::days;
using date::local_days;
using date::local_seconds;
using date::sys_seconds;
using std::chrono::seconds;

// A day inside the years at either end, so that no zone's offset leads out of them.
constexpr sys_seconds kFirst{date::sys_days{date::year{1} / 1 / 2}};
constexpr sys_seconds kLast{date::sys_days{date::year{9999} / 12 / 30}};
constexpr std::int64_t kSpanDays = std::chrono::floor<days>(kLast - kFirst).count();

// A wall time taken apart: the second that it lies in and how far in.
struct Instant {
    sys_seconds second;
    double fraction = 0;
};

bool isInYears(WallTime time) {
    const double unixSec = secondsSinceReference(time) + WallClock::kUnixOffsetSec;
    return unixSec >= static_cast<double>(kFirst.time_since_epoch().count()) &&
           unixSec <= static_cast<double>(kLast.time_since_epoch().count());
}

WallTime wallTimeOf(sys_seconds second, double fraction = 0) {
    const std::int64_t sinceReference =
        second.time_since_epoch().count() - WallClock::kUnixOffsetSec;
    return wallTimeAt(static_cast<double>(sinceReference) + fraction);
}

Instant instantOf(WallTime time) {
    if (std::isnan(secondsSinceReference(time))) {
        time = WallTime{};
    }
    time = std::clamp(time, wallTimeOf(kFirst), wallTimeOf(kLast));
    const double whole = std::floor(secondsSinceReference(time));
    return {sys_seconds{seconds{std::llround(whole) + WallClock::kUnixOffsetSec}},
            secondsSinceReference(time) - whole};
}

seconds offsetAt(const date::time_zone* zone, sys_seconds at) {
    return zone == nullptr ? seconds{0} : zone->get_info(at).offset;
}

local_seconds localOf(const date::time_zone* zone, sys_seconds at) {
    return local_seconds{at.time_since_epoch() + offsetAt(zone, at)};
}

local_days localDayOf(const date::time_zone* zone, WallTime time) {
    return std::chrono::floor<days>(localOf(zone, instantOf(time).second));
}

// The first of two, the landing instant of a leap.
sys_seconds firstShowing(const date::time_zone* zone, local_seconds local) {
    return zone == nullptr ? sys_seconds{local.time_since_epoch()}
                           : zone->to_sys(local, date::choose::earliest);
}

bool dayExists(const date::time_zone* zone, local_days day) {
    if (zone == nullptr) {
        return true;
    }
    const date::local_info midnight = zone->get_info(local_seconds{day});
    if (midnight.result != date::local_info::nonexistent) {
        return true;
    }
    const local_seconds landing{midnight.second.begin.time_since_epoch() + midnight.second.offset};
    return landing < local_seconds{day + days{1}};
}

const date::time_zone* findZone(const std::string& name) {
    try {
        const date::time_zone* zone = date::locate_zone(name);
        // The zone's file is read at the first question; it may be damaged.
        static_cast<void>(zone->get_info(kFirst));
        return zone;
    } catch (const std::exception&) {
        return nullptr;
    }
}

}  // namespace

ZonedCalendar::ZonedCalendar(ZoneName zoneName) : zoneName_(std::move(zoneName)) {}

const date::time_zone* ZonedCalendar::zone() const {
    std::string name = zoneName_();
    if (lookedUpName_ != name) {
        lookedUp_ = findZone(name);
        lookedUpName_ = std::move(name);
    }
    return lookedUp_;
}

Calendar::Components ZonedCalendar::components(WallTime time) const {
    const local_seconds local = localOf(zone(), instantOf(time).second);
    const local_days day = std::chrono::floor<days>(local);
    const date::year_month_day ymd{day};
    const date::hh_mm_ss timeOfDay{local - local_seconds{day}};
    return {
        .day = {static_cast<int>(ymd.year()), static_cast<int>(static_cast<unsigned>(ymd.month())),
                static_cast<int>(static_cast<unsigned>(ymd.day()))},
        .weekday = static_cast<int>(date::weekday{day}.c_encoding()) + 1,
        .hour = static_cast<int>(timeOfDay.hours().count()),
        .minute = static_cast<int>(timeOfDay.minutes().count()),
        .second = static_cast<int>(timeOfDay.seconds().count())};
}

WallTime ZonedCalendar::startOfDay(WallTime time) const {
    const date::time_zone* in = zone();
    return wallTimeOf(firstShowing(in, local_seconds{localDayOf(in, time)}));
}

std::optional<WallTime> ZonedCalendar::nextMatching(WallTime after, int hour, int minute) const {
    if (!isInYears(after)) {
        return std::nullopt;
    }
    const date::time_zone* in = zone();
    const local_days today = localDayOf(in, after);
    // Today's may be over, and one day may be missing: the third day has it in any case.
    for (days ahead{0}; ahead <= days{3}; ++ahead) {
        const local_days day = today + ahead;
        const local_seconds wanted =
            local_seconds{day} + std::chrono::hours{hour} + std::chrono::minutes{minute};
        const WallTime match = wallTimeOf(firstShowing(in, wanted));
        if (match > after && dayExists(in, day)) {
            return isInYears(match) ? std::optional(match) : std::nullopt;
        }
    }
    return std::nullopt;
}

std::optional<WallTime> ZonedCalendar::addDays(WallTime time, std::int64_t count) const {
    if (!isInYears(time) || count < -kSpanDays || count > kSpanDays) {
        return std::nullopt;
    }
    if (count == 0) {
        return time;
    }
    const date::time_zone* in = zone();
    const Instant from = instantOf(time);
    const local_seconds wanted = localOf(in, from.second) + days{count};
    const sys_seconds moved = firstShowing(in, wanted);
    const double fraction = localOf(in, moved) == wanted ? from.fraction : 0;
    const WallTime result = wallTimeOf(moved, fraction);
    return isInYears(result) ? std::optional(result) : std::nullopt;
}

std::int64_t ZonedCalendar::daysBetween(WallTime from, WallTime to) const {
    const date::time_zone* in = zone();
    return (localDayOf(in, to) - localDayOf(in, from)).count();
}

std::int64_t ZonedCalendar::utcOffsetSec(WallTime time) const {
    return offsetAt(zone(), instantOf(time).second).count();
}

}  // namespace ostrel
