#include "platform/calendar/zoned_calendar.h"

#include <gtest/gtest.h>

#include <string>

#include "platform/api/iso_time.h"

namespace ostrel {
namespace {

using namespace std::chrono_literals;

constexpr WallClock::duration part(double sec) {
    return WallClock::duration{sec};
}

WallTime unixTime(std::int64_t sec) {
    return WallTime{wallSec(sec - WallClock::kUnixOffsetSec)};
}

struct ZonedCalendarTest : ::testing::Test {
    std::string zone = "UTC";
    ZonedCalendar calendar{[this] { return zone; }};

    // In the form "2026-03-09T09:15:10+01:00".
    std::string text(WallTime time) const { return isoLocalTime(calendar, time); }
    std::string text(const std::optional<WallTime>& time) const {
        return time ? text(*time) : "none";
    }
};

// The first second at which the local date is later than that of `from`, found by walking.
WallTime walkToNextDay(const Calendar& calendar, WallTime from) {
    const CalendarDay day = calendar.components(from).day;
    WallTime time = from;
    while (calendar.components(time).day <= day) {
        time += wallSec(60);
    }
    return time;
}

struct OddMidnight {
    const char* zone;
    std::int64_t noonBefore;  // Unix time of about noon on the day before
    const char* start;
};

constexpr OddMidnight kOddMidnights[] = {
    {"Asia/Beirut", 1'648'288'800, "2022-03-27T01:00:00+03:00"},      // missing
    {"America/Havana", 1'667'664'000, "2022-11-06T00:00:00-04:00"},   // twice
    {"Atlantic/Azores", 1'792'843'200, "2026-10-25T00:00:00+00:00"},  // twice
    {"Africa/Cairo", 1'698'310'800, "2023-10-27T00:00:00+02:00"},     // 23:xx twice before it
    {"Pacific/Apia", 1'325'196'000, "2011-12-31T00:00:00+14:00"},     // a date is missing
};

TEST_F(ZonedCalendarTest, DayBeginsAtItsFirstInstantAndTheMidnightTimerFindsIt) {
    for (const OddMidnight& odd : kOddMidnights) {
        SCOPED_TRACE(odd.start);
        zone = odd.zone;
        const WallTime before = unixTime(odd.noonBefore);
        const WallTime start = walkToNextDay(calendar, before);
        EXPECT_EQ(text(start), odd.start);
        EXPECT_EQ(text(calendar.nextMatching(before, 0, 0)), odd.start);
        EXPECT_EQ(text(calendar.startOfDay(start - part(0.25))), text(calendar.startOfDay(before)));
        // From the first instant on it is the following midnight's turn, also at a second 00:00.
        for (const auto into : {0s, 1800s, 3600s, 4000s}) {
            EXPECT_EQ(text(calendar.startOfDay(start + into)), odd.start) << into.count();
            EXPECT_EQ(text(calendar.nextMatching(start + into, 0, 0)),
                      text(walkToNextDay(calendar, start + 12h)))
                << into.count();
        }
    }
}

TEST_F(ZonedCalendarTest, NextMatchIsStrictlyLaterAndFollowsGapsAndRepeats) {
    const struct {
        const char* zone;
        std::int64_t after;
        int hour;
        int minute;
        const char* expected;
    } cases[] = {
        {"Europe/Berlin", 1'773'044'099, 9, 15, "2026-03-09T09:15:00+01:00"},
        {"Europe/Berlin", 1'773'044'100, 9, 15, "2026-03-10T09:15:00+01:00"},
        // 02:00 to 03:00 is missing on 2026-03-29: the instant that the clock lands on.
        {"Europe/Berlin", 1'774'738'800, 2, 30, "2026-03-29T03:00:00+02:00"},
        {"Europe/Berlin", 1'774'746'000, 2, 30, "2026-03-30T02:30:00+02:00"},
        // 02:00 to 03:00 comes twice on 2026-10-25: the first time only.
        {"Europe/Berlin", 1'792'879'200, 2, 30, "2026-10-25T02:30:00+02:00"},
        {"Europe/Berlin", 1'792'888'200, 2, 30, "2026-10-26T02:30:00+01:00"},
        // 2011-12-30 does not exist: 09:00 of the 29th is followed by that of the 31st.
        {"Pacific/Apia", 1'325'185'200, 9, 0, "2011-12-31T09:00:00+14:00"},
        // Half past eleven to half past midnight is missing: also the next day's can be landed on.
        {"America/Toronto", -1'601'773'200, 23, 45, "1919-03-31T00:30:00-04:00"},
    };
    for (const auto& [name, after, hour, minute, expected] : cases) {
        zone = name;
        EXPECT_EQ(text(calendar.nextMatching(unixTime(after), hour, minute)), expected) << name;
    }
}

TEST_F(ZonedCalendarTest, WholeDaysAreCountedOnTheCalendarNotInHours) {
    zone = "Europe/Berlin";
    const WallTime noon = unixTime(1'774'695'600);  // 2026-03-28 12:00, the clock leaps that night
    EXPECT_EQ(text(calendar.addDays(noon, 1)), "2026-03-29T12:00:00+02:00");
    EXPECT_EQ(text(calendar.addDays(noon + part(0.5), -30)), "2026-02-26T12:00:00.500+01:00");
    EXPECT_EQ(text(calendar.addDays(noon - 34200s, 1)), "2026-03-29T03:00:00+02:00");  // no 02:30
    const WallTime second0230 = unixTime(1'792'891'800);  // the later 02:30 of 2026-10-25
    EXPECT_EQ(calendar.addDays(second0230, 0), second0230);
    EXPECT_EQ(calendar.daysBetween(noon + 11h + 59min, noon + 12h), 1);
    EXPECT_EQ(calendar.daysBetween(noon, noon + 34h), 1);
    EXPECT_EQ(calendar.daysBetween(noon, noon + 35h), 2);  // midnight comes an hour early
    EXPECT_EQ(calendar.daysBetween(noon, noon - 366 * 24h), -366);
}

TEST_F(ZonedCalendarTest, FollowsAChangedZoneAndTakesUnknownOnesForUtc) {
    const std::pair<const char*, const char*> cases[] = {
        {"UTC", "2026-03-09T08:15:10.500+00:00"},
        {"America/St_Johns", "2026-03-09T05:45:10.500-02:30"},
        {"../../etc/passwd", "2026-03-09T08:15:10.500+00:00"},
        {"", "2026-03-09T08:15:10.500+00:00"},
    };
    for (const auto& [name, shown] : cases) {
        zone = name;
        EXPECT_EQ(text(unixTime(1'773'044'110) + part(0.5)), shown) << name;
    }
    EXPECT_EQ(text(unixTime(1'773'044'110) + part(0.9996)), "2026-03-09T08:15:11+00:00");
}

}  // namespace
}  // namespace ostrel
