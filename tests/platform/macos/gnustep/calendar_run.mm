#import <Foundation/Foundation.h>
#include <gtest/gtest.h>

#include <random>

#include "platform/api/iso_time.h"
#include "platform/calendar/zoned_calendar.h"

namespace ostrel {
namespace {

// Zones with a missing and a double midnight, with half hours, south, and without any change.
constexpr const char* kZones[] = {
    "Europe/Berlin",       "America/Havana", "Asia/Beirut",       "Atlantic/Azores",
    "Australia/Lord_Howe", "Asia/Kathmandu", "America/Sao_Paulo", "UTC"};

constexpr NSUInteger kParts = NSCalendarUnitYear | NSCalendarUnitMonth | NSCalendarUnitDay |
                              NSCalendarUnitWeekday | NSCalendarUnitHour | NSCalendarUnitMinute |
                              NSCalendarUnitSecond;

struct SystemCalendar {
    explicit SystemCalendar(const char* zone)
        : calendar([[NSCalendar alloc] initWithCalendarIdentifier:NSCalendarIdentifierGregorian]) {
        [calendar setTimeZone:[NSTimeZone timeZoneWithName:@(zone)]];
    }
    Calendar::Components at(WallTime time) const {
        NSDateComponents* const parts = [calendar
            components:kParts
              fromDate:[NSDate dateWithTimeIntervalSinceReferenceDate:secondsSinceReference(time)]];
        return {{int([parts year]), int([parts month]), int([parts day])},
                int([parts weekday]),
                int([parts hour]),
                int([parts minute]),
                int([parts second])};
    }
    NSCalendar* calendar;
};

std::string text(const Calendar::Components& c) {
    return dayKey(c.day) + " " + std::to_string(c.weekday) + " " + std::to_string(c.hour) + ":" +
           std::to_string(c.minute) + ":" + std::to_string(c.second);
}

// What has been decided on since is known to one of them alone: each has tables of its own.
TEST(CalendarRun, ZonedCalendarAndItsDaysAgreeWithTheSystemsOnRandomTimesOfThoseYears) {
    std::mt19937 random(7);
    std::uniform_int_distribution<std::int64_t> secOf2005To2021(126'230'400, 662'688'000);
    for (const char* zone : kZones) {
        const SystemCalendar system(zone);
        const ZonedCalendar ours([zone] { return std::string(zone); });
        for (int i = 0; i < 500; ++i) {
            const WallTime time{wallSec(secOf2005To2021(random))};
            const WallTime start = ours.startOfDay(time);
            const std::string label = zone + isoLocalTime(ours, time);
            ASSERT_EQ(text(ours.components(time)), text(system.at(time))) << label;
            ASSERT_EQ(system.at(start).day, system.at(time).day) << label;
            ASSERT_NE(system.at(start - wallSec(1)).day, system.at(time).day) << label;
        }
    }
}

}  // namespace
}  // namespace ostrel
