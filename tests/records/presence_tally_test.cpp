#include "records/presence_tally.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <utility>

#include "app/environment/app_environment.h"
#include "app/simulator/virtual_platform.h"
#include "support/records_bench.h"

namespace ostrel {
namespace {

constexpr const char* kTally = "ostrel.presenceTally.v1";
using Totals = PresenceTally::Totals;

struct PresenceTallyTest : ::testing::Test, RecordsBench {
    PresenceTallyTest() : RecordsBench("2026-03-09T23:59:30") {}

    PresenceTally tally{preferences, calendar, clock()};
};

}  // namespace

TEST_F(PresenceTallyTest, EachCountFallsOnItsDayWhereverTheUserIs) {
    EXPECT_EQ(tally.totals(60), Totals{});
    EXPECT_EQ(stored(kTally), "nothing");
    tally.countHeld();
    tally.countCredited();
    tally.countCredited();
    run(60);
    EXPECT_EQ(tally.totals(1), Totals{}) << "midnight has passed";
    tally.countHeld();
    zone = "Pacific/Honolulu";  // the day before once more
    tally.countHeld();
    EXPECT_EQ(stored(kTally), R"([{"day":"2026-03-09","held":2,"credited":2},)"
                              R"({"day":"2026-03-10","held":1,"credited":0}])");
    EXPECT_EQ(tally.totals(1), (Totals{3, 2})) << "tomorrow was counted already";
    EXPECT_EQ(*PresenceTally(preferences, calendar, clock()).days(), *tally.days());
}

TEST_F(PresenceTallyTest, KeepsSixtyDaysAndSumsUpTheLastOfThem) {
    for (const char* day : {"2026-01-08T23:59:59", "2026-01-09T00:00:00", "2026-03-02T12:00:00",
                            "2026-03-03T12:00:00", "2026-03-09T12:00:00"}) {
        jumpTo(day);
        tally.countHeld();
    }
    for (const auto& [lastDays, held] :
         {std::pair{1, 1}, {6, 1}, {7, 2}, {8, 3}, {59, 3}, {60, 4}, {99, 4}}) {
        EXPECT_EQ(tally.totals(lastDays).held, held) << lastDays;
    }
}

TEST(PresenceTallyOfTheEngineTest, CountsEachHeldBreakOnce) {
    VirtualPlatform platform("UTC", wallTimeOf(*parseLocalTime("2026-03-09T09:00:00"), "UTC"));
    AppEnvironment environment(platform.platform(seededUuids(1)));
    environment.launch();
    platform.frontmost.set({{"us.zoom.xos", 7}});
    // The eye break of 1200 is dropped, the one of 2400 taken over by the body break of 3000, which
    // is dropped at 3300.
    std::int64_t second = 0;
    for (const auto& [until, held] :
         {std::pair{1200, 0}, {2399, 1}, {2400, 1}, {3000, 1}, {3301, 2}}) {
        platform.runLoop.runFor(runLoopSec(static_cast<double>(until - second)));
        second = until;
        EXPECT_EQ(environment.presenceTally().totals(1), (Totals{held, 0})) << until;
    }
}

}  // namespace ostrel
