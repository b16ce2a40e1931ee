#include "records/daily_counter.h"

#include <gtest/gtest.h>

#include <vector>

#include "support/records_bench.h"

namespace ostrel {

TEST(DailyCounterTest, BreakAfterMidnightAndBeforeTheTimerIsTheNewDays) {
    RecordsBench bench("2026-03-09T23:00:00");
    DailyCounter counter(
        {bench.preferences, bench.calendar, bench.runLoop, bench.systemEvents, bench.clock()});
    counter.recordSkip();
    std::vector<DailyCounterModel> heard;
    const Subscription watching =
        counter.model().onChange([&](const DailyCounterModel& model) { heard.push_back(model); });
    bench.jumpTo("2026-03-10T00:00:30");
    counter.recordSkip();
    EXPECT_EQ(heard, (std::vector<DailyCounterModel>{{"2026-03-10", 0, 0, 0, 0},
                                                     {"2026-03-10", 0, 0, 1, 0}}));
}

}  // namespace ostrel
