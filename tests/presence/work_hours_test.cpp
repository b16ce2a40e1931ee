#include "presence/work_hours.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>
#include <random>
#include <vector>

#include "platform/calendar/zoned_calendar.h"
#include "support/random_runs.h"

namespace ostrel {
namespace {

constexpr std::int64_t kMinutesPerDay = 1440;
constexpr std::int64_t kMinutesPerWeek = 7 * kMinutesPerDay;

// A year in a zone by the C library, minute by minute, each as the minute of its week from Sunday
// on.
struct Year {
    Year(const char* zoneName, int number) : zone(zoneName) {
        setenv("TZ", zone, 1);
        tzset();
        std::tm first{};
        first.tm_year = number - 1900;
        first.tm_mday = 1;
        const std::time_t begin = timegm(&first);
        firstSec = static_cast<double>(begin - WallClock::kUnixOffsetSec);
        for (int i = 0; i < 366 * kMinutesPerDay; ++i) {
            const std::time_t time = begin + std::time_t{60} * i;
            std::tm local{};
            localtime_r(&time, &local);
            minutes.push_back(
                static_cast<std::size_t>((local.tm_wday * 24 + local.tm_hour) * 60 + local.tm_min));
        }
        unsetenv("TZ");
        tzset();
    }
    [[nodiscard]] WallTime at(std::size_t minute) const {
        return wallTimeAt(firstSec + 60.0 * static_cast<double>(minute));
    }

    const char* zone;
    double firstSec = 0;
    std::vector<std::size_t> minutes;
};

// Which minutes of a week are inside, marked one by one.
std::vector<bool> markedWeek(const WindowShape& shape) {
    std::vector<bool> inside(static_cast<std::size_t>(kMinutesPerWeek));
    const bool isWholeDay = shape.workHoursStartMinute == shape.workHoursEndMinute;
    const std::int64_t first = isWholeDay ? 0 : shape.workHoursStartMinute;
    const std::int64_t length =
        isWholeDay ? kMinutesPerDay
                   : (shape.workHoursEndMinute - first + kMinutesPerDay) % kMinutesPerDay;
    for (const std::int64_t day : shape.workDays) {
        for (std::int64_t i = 0; i < length; ++i) {
            const std::int64_t minute = ((day - 1) * kMinutesPerDay + first + i) % kMinutesPerWeek;
            inside[static_cast<std::size_t>(minute)] = true;
        }
    }
    return inside;
}

WindowShape randomShape(std::mt19937& random) {
    const auto minute = [&random] {
        const auto any = static_cast<std::int64_t>(random() % std::uint32_t{kMinutesPerDay});
        return random() % 2 == 0 ? any : any / 30 * 30;
    };
    WindowShape shape{true, minute(), minute(), {}};
    if (random() % 10 == 0) {
        shape.workHoursEndMinute = shape.workHoursStartMinute;
    }
    for (std::int64_t day = 1; day <= 7; ++day) {
        if (random() % 3 != 0) {
            shape.workDays.insert(day);
        }
    }
    return shape;
}

// From any minute since the change before it, a change is the next boundary.
void expectYear(const Year& year, const WindowShape& shape, std::mt19937& random) {
    const ZonedCalendar calendar([&year] { return std::string(year.zone); });
    const std::vector<bool> inside = markedWeek(shape);
    constexpr std::size_t kHorizon = 8 * kMinutesPerDay;  // the code looks no further
    std::size_t lastChange = 0;
    for (std::size_t minute = 0; minute < year.minutes.size(); ++minute) {
        const bool isInside = inside[year.minutes[minute]];
        ASSERT_EQ(isWithin(year.at(minute), shape, calendar), isInside)
            << year.zone << " minute " << minute;
        if (minute > 0 && isInside != inside[year.minutes[minute - 1]]) {
            const std::size_t from = lastChange + random() % (minute - lastChange);
            const WallTime now = year.at(from) + wallSec(static_cast<std::int64_t>(random() % 60));
            const auto found = nextBoundary(now, shape, calendar);
            if (found || minute - from < kHorizon) {
                ASSERT_EQ(found, year.at(minute)) << year.zone << " minute " << from;
            }
            lastChange = minute;
        }
    }
    if (lastChange == 0) {
        EXPECT_EQ(nextBoundary(year.at(0), shape, calendar), std::nullopt) << "it never changes";
    }
}

// Windows over zones with ordinary, half-hour and midnight changes of the clock, and one that left
// a day out.
TEST(RandomWorkHours, EveryMinuteOfAYearIsAsMarkedAndTheBoundaryIsTheFirstThatDiffers) {
    const Year years[] = {{"Europe/Berlin", 2026},
                          {"Asia/Beirut", 2022},
                          {"America/Havana", 2022},
                          {"Australia/Lord_Howe", 2026},
                          {"Pacific/Apia", 2011}};
    const int shapes = randomRuns(10, 2'000);
    for (int run = 0; run < shapes; ++run) {
        std::mt19937 random(static_cast<unsigned>(run));
        const WindowShape shape = randomShape(random);
        expectYear(years[static_cast<std::size_t>(run) % std::size(years)], shape, random);
        if (testing::Test::HasFatalFailure()) {
            FAIL() << "run " << run;
        }
    }
}

}  // namespace
}  // namespace ostrel
