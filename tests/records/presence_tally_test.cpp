#include "records/presence_tally.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <iterator>
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

TEST_F(PresenceTallyTest, WhatCannotBeReadCountsAsNoneAndIsSetAside) {
    for (const char* bytes :
         {"x", "{}", R"([{"day":"2026-03-09","held":1}])",
          R"([{"day":"2026-02-30","held":1,"credited":0}])",
          R"([{"day":"2026-03-09","held":"1","credited":0}])",
          R"([{"day":"2026-03-09","held":-1,"credited":0}])",
          R"([{"day":"2026-03-09","held":0,"credited":9223372036854775807}])"}) {
        preferences.write(kTally, bytes);
        PresenceTally fresh(preferences, calendar, clock());
        EXPECT_EQ(fresh.totals(60), Totals{}) << bytes;
        EXPECT_EQ(stored(kTally), bytes) << "looking changes nothing";
        const std::size_t before = preferences.damaged().size();
        fresh.countCredited();
        EXPECT_EQ(stored(kTally), R"([{"day":"2026-03-09","held":0,"credited":1}])");
        ASSERT_EQ(preferences.damaged().size(), before + 1);
        EXPECT_EQ(std::prev(preferences.damaged().end())->second, bytes);
    }
}

TEST_F(PresenceTallyTest, OddDocumentsAreBorne) {
    preferences.write(kTally, R"([{"day":"9999-12-31","held":1,"credited":0},)"
                              R"({"day":"0001-01-01","held":1,"credited":0},)"
                              R"({"day":"2026-03-09","held":1000000,"credited":0}])");
    PresenceTally odd(preferences, calendar, clock());
    EXPECT_EQ(odd.totals(60).held, 1'000'001);
    odd.countHeld();
    EXPECT_EQ(stored(kTally), R"([{"day":"2026-03-09","held":1000000,"credited":0},)"
                              R"({"day":"9999-12-31","held":1,"credited":0}])");
}

TEST(PresenceTallyOfTheEngineTest, CountsEachHeldBreakAndEachCreditedBreakOnce) {
    VirtualPlatform platform("UTC", wallTimeOf(*parseLocalTime("2026-03-09T09:00:00"), "UTC"));
    AppEnvironment environment(platform.platform(seededUuids(1)));
    environment.launch();
    platform.frontmost.set({{"us.zoom.xos", 7}});
    // The eye break of 1200 is dropped, the one of 2400 taken over by the body break of 3000, which
    // is dropped at 3300. The eye break in it is back within a minute, and held until the absence.
    std::int64_t second = 0;
    for (const auto& [until, held] :
         {std::pair{1200, 0}, {2399, 1}, {2400, 1}, {3000, 1}, {3301, 2}, {3361, 2}}) {
        platform.runLoop.runFor(runLoopSec(static_cast<double>(until - second)));
        second = until;
        EXPECT_EQ(environment.presenceTally().totals(1), (Totals{held, 0})) << until;
    }
    std::int64_t credited = 0;
    for (const auto& [awaySec, credits] :
         {std::pair{119, 0}, {120, 1}, {299, 1}, {300, 2}, {43'200, 2}, {43'201, 0}}) {
        environment.timerEngine().markUserIdle();
        environment.timerEngine().markUserReturned(awaySec);
        credited += credits;
        EXPECT_EQ(environment.presenceTally().totals(1), (Totals{2, credited})) << awaySec;
    }
    platform.runLoop.runFor(runLoopSec(900));
    EXPECT_EQ(environment.presenceTally().totals(1), (Totals{3, credited}));
}

}  // namespace ostrel
