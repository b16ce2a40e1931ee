#include <gtest/gtest.h>

#include "records/daily_counter.h"
#include "records/postpone_quota.h"
#include "records/postpone_service.h"
#include "support/records_bench.h"

namespace ostrel {

TEST(PostponeTest, OneAnHour) {
    RecordsBench bench;
    DailyCounter counter(
        {bench.preferences, bench.calendar, bench.runLoop, bench.systemEvents, bench.clock()});
    PostponeQuota quota(bench.preferences, bench.clock());
    PostponeService postpones(bench.clock(), quota, counter);
    constexpr double kMinuteSec = 60;
    EXPECT_EQ(postpones.remainingPostpones(), 1);
    bench.run(50 * kMinuteSec);
    EXPECT_TRUE(postpones.tryPostpone());
    EXPECT_EQ(postpones.remainingPostpones(), 0);
    EXPECT_FALSE(postpones.tryPostpone());
    EXPECT_EQ(counter.model()->postponesToday, 1) << "a refused one does not count";
    bench.run(10 * kMinuteSec);  // an hour after the span began, not after the postpone
    EXPECT_TRUE(postpones.tryPostpone());
    bench.run(59 * kMinuteSec);
    EXPECT_EQ(*PostponeQuota(bench.preferences, bench.clock()).used(), 1)
        << "a relaunch is no new hour";
    EXPECT_FALSE(postpones.tryPostpone());
    bench.run(1 * kMinuteSec);
    EXPECT_EQ(postpones.remainingPostpones(), 1);
    EXPECT_EQ(bench.stored("ostrel.postponeQuota.v1"), R"({"used":0,"windowStart":794746800.0})")
        << "asking began the new hour";
}

}  // namespace ostrel
