#include "records/daily_counter.h"

#include <gtest/gtest.h>

#include <vector>

#include "support/records_bench.h"

namespace ostrel {
namespace {

struct Bench : RecordsBench {
    using RecordsBench::RecordsBench;

    DailyCounter::Services services() {
        return {preferences, calendar, runLoop, systemEvents, clock()};
    }
};

}  // namespace

TEST(DailyCounterTest, MidnightsAsTheyCome) {
    struct Case {
        const char* zone;
        const char* start;
        double secondsToMidnight;
        const char* nextDay;
    };
    for (const Case& one :
         {Case{"Asia/Beirut", "2022-03-26T23:00:00", 3600, "2022-03-27"},     // 24:00 is 01:00
          Case{"America/Havana", "2022-11-05T23:00:00", 3600, "2022-11-06"},  // and again at 1:00
          Case{"UTC", "2026-12-31T00:00:00", 86400, "2027-01-01"}}) {
        Bench bench(one.start, one.zone);
        DailyCounter counter(bench.services());
        counter.recordSkip();
        const std::string today = counter.model()->dateKey;
        bench.run(one.secondsToMidnight - 1);
        EXPECT_EQ(*counter.model(), (DailyCounterModel{today, 0, 0, 1, 0})) << one.zone;
        bench.run(1);
        EXPECT_EQ(*counter.model(), (DailyCounterModel{one.nextDay, 0, 0, 0, 0})) << one.zone;
        counter.recordSkip();
        bench.run(82'000);
        EXPECT_EQ(counter.model()->skipsToday, 1) << "one day has one midnight: " << one.zone;
        bench.run(10'000);
        EXPECT_EQ(counter.model()->skipsToday, 0) << "and the day after comes: " << one.zone;
    }
}

TEST(DailyCounterTest, BreakAfterMidnightAndBeforeTheTimerIsTheNewDays) {
    Bench bench("2026-03-09T23:00:00");
    DailyCounter counter(bench.services());
    counter.recordSkip();
    std::vector<DailyCounterModel> heard;
    const Subscription watching =
        counter.model().onChange([&](const DailyCounterModel& model) { heard.push_back(model); });
    bench.jumpTo("2026-03-10T00:00:30");
    counter.recordSkip();
    EXPECT_EQ(heard, (std::vector<DailyCounterModel>{{"2026-03-10", 0, 0, 0, 0},
                                                     {"2026-03-10", 0, 0, 1, 0}}));
}

TEST(DailyCounterTest, FollowsTheUserAcrossTheDateLine) {
    Bench bench("2026-03-09T23:30:00", "Pacific/Honolulu");
    DailyCounter counter(bench.services());
    counter.recordSkip();
    bench.zone = "Pacific/Kiritimati";  // 24 hours ahead, the same time of day
    bench.systemEvents.clockChanged.send();
    EXPECT_EQ(*counter.model(), (DailyCounterModel{"2026-03-10", 0, 0, 0, 0}));
    bench.run(1800);
    EXPECT_EQ(counter.model()->dateKey, "2026-03-11");
    bench.zone = "Pacific/Honolulu";
    bench.systemEvents.clockChanged.send();
    EXPECT_EQ(counter.model()->dateKey, "2026-03-10");
}

}  // namespace ostrel
