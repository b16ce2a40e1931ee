#include "presence/work_hours.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>
#include <random>
#include <vector>

#include "support/random_runs.h"
#include "support/records_bench.h"

namespace ostrel {
namespace {

constexpr std::int64_t kMinutesPerDay = 1440;

TEST(WorkHours, WithoutHoursItIsAlwaysTimeAndNothingChangesThatOrAWindowOfAllOrNoDays) {
    const RecordsBench bench;
    const WallTime now = bench.now();
    EXPECT_TRUE(isWithin(now, {false, 540, 1080, {}}, bench.calendar));
    const std::set<std::int64_t> kEveryDay{1, 2, 3, 4, 5, 6, 7};
    for (const WindowShape& shape : {WindowShape{false, 540, 1080, {2}},
                                     {true, 540, 540, kEveryDay},
                                     {true, 540, 1080, {}},
                                     {true, 100'000, -1, {2}}}) {
        EXPECT_EQ(nextBoundary(now, shape, bench.calendar), std::nullopt)
            << shape.workHoursStartMinute;
    }
}

// A year in a zone by the C library: of each minute, which of the week it is there.
struct Year {
    Year(const char* zoneName, int yearNumber) : zone(zoneName) {
        setenv("TZ", zoneName, 1);
        tzset();
        std::tm first{};
        first.tm_year = yearNumber - 1900;
        first.tm_mday = 1;
        begin = timegm(&first);
        for (int i = 0; i < 366 * kMinutesPerDay; ++i) {
            const std::time_t time = begin + std::time_t{60} * i;
            std::tm local{};
            localtime_r(&time, &local);
            ofWeek.push_back(static_cast<std::uint16_t>((local.tm_wday * 24 + local.tm_hour) * 60 +
                                                        local.tm_min));
        }
        unsetenv("TZ");
        tzset();
    }
    [[nodiscard]] WallTime at(std::size_t minute) const {
        return wallTimeAt(static_cast<double>(begin - WallClock::kUnixOffsetSec) +
                          60.0 * static_cast<double>(minute));
    }

    const char* zone;
    std::time_t begin = 0;
    std::vector<std::uint16_t> ofWeek;
};

// Which minutes of a week are inside, marked one by one from Sunday on.
std::vector<bool> markedWeek(const WindowShape& shape) {
    constexpr std::int64_t kMinutesPerWeek = 7 * kMinutesPerDay;
    std::vector<bool> inside(kMinutesPerWeek);
    const std::int64_t start = shape.workHoursStartMinute;
    const bool isWholeDay = start == shape.workHoursEndMinute;
    for (const std::int64_t day : shape.workDays) {
        std::int64_t minute = (day - 1) * kMinutesPerDay + (isWholeDay ? 0 : start);
        const std::int64_t length =
            isWholeDay ? kMinutesPerDay
                       : (shape.workHoursEndMinute - start + kMinutesPerDay) % kMinutesPerDay;
        for (const std::int64_t end = minute + length; minute < end; ++minute) {
            inside[static_cast<std::size_t>(minute % kMinutesPerWeek)] = true;
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

// The first minute at which the marks change, for no more than the days that the code looks ahead.
void expectBoundaries(const Year& year, const WindowShape& shape, const Calendar& calendar,
                      std::mt19937& random) {
    const std::vector<bool> week = markedWeek(shape);
    constexpr std::size_t kHorizon = 8 * kMinutesPerDay;
    for (int i = 0; i < 60; ++i) {
        const std::size_t from = random() % (year.ofWeek.size() - kHorizon);
        const bool before = week[year.ofWeek[from]];
        std::size_t change = from + 1;
        while (change < from + kHorizon && week[year.ofWeek[change]] == before) {
            ++change;
        }
        const WallTime now = year.at(from) + wallSec(static_cast<std::int64_t>(random() % 60));
        const auto found = nextBoundary(now, shape, calendar);
        if (change < from + kHorizon) {
            ASSERT_EQ(found, year.at(change)) << year.zone << " minute " << from;
        } else {
            ASSERT_FALSE(found && *found < year.at(change)) << year.zone << " minute " << from;
        }
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
        const Year& year = years[static_cast<std::size_t>(run) % std::size(years)];
        const ZonedCalendar calendar([&year] { return std::string(year.zone); });
        const WindowShape shape = randomShape(random);
        const std::vector<bool> week = markedWeek(shape);
        for (std::size_t minute = 0; minute < year.ofWeek.size(); ++minute) {
            ASSERT_EQ(isWithin(year.at(minute), shape, calendar), week[year.ofWeek[minute]])
                << "run " << run << " " << year.zone << " minute " << minute;
        }
        expectBoundaries(year, shape, calendar, random);
        if (testing::Test::HasFatalFailure()) {
            FAIL() << "run " << run;
        }
    }
}

}  // namespace
}  // namespace ostrel
