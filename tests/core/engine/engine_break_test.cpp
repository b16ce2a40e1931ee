#include <gtest/gtest.h>

#include "support/engine_bench.h"

namespace ostrel {

struct EngineBreakTest : ::testing::Test {
    EngineBreakTest() { bench.setUp(quiet); }
    EngineBench bench;
};

// The eye break falls due at second 1200 with a duration of 120: it merges up to 120 + 300 seconds
// before the body break.
TEST_F(EngineBreakTest, FoldsAnEyeBreakThatComesCloseEnoughBeforeTheBodyBreak) {
    struct {
        std::int64_t gapSec;
        Events events;
    } const cases[] = {
        {1, {"1200 toast merged 1", "1200 open body +0"}},
        {60, {"1200 toast merged 1"}},
        {61, {"1200 toast merged 2"}},
        {200, {"1200 toast merged 4"}},
        {420, {"1200 toast merged 7"}},
        {421, {"1200 open eye +0"}},
    };
    for (const auto& [gapSec, events] : cases) {
        EngineBench fresh;
        fresh.setUp(quiet);
        TimerEngine& engine = fresh.launch(1200, 1199 + gapSec);
        fresh.run(1200);
        EXPECT_EQ(fresh.take(), events) << gapSec;
        EXPECT_EQ(engine.eyeMergedIntoBody(), gapSec <= 420) << gapSec;
        EXPECT_EQ(engine.state()->eye.remainingSec, 1200) << gapSec;
    }
}

TEST_F(EngineBreakTest, WindowGrowsWithTheEyeDurationAndCanBeSwitchedOff) {
    bench.setUp([](SettingsModel& settings) { settings.eyeBreakDurationSec = 20; });
    bench.launch(600, 599 + 321);
    bench.run(600);
    EXPECT_EQ(bench.take(), (Events{"600 open eye +0"}));

    bench.setUp([](SettingsModel& settings) { settings.mergeNearbyBreaks = false; });
    bench.launch(600, 599 + 320);
    bench.run(600);
    EXPECT_EQ(bench.take(), (Events{"1200 open eye +0"}));
}

TEST_F(EngineBreakTest, HoldLastsItsLimitAndAtLeastAMinute) {
    const std::pair<std::int64_t, std::int64_t> limits[] = {
        {900, 900}, {61, 61}, {60, 60}, {0, 60}};
    for (const auto& [settingSec, heldSec] : limits) {
        EngineBench fresh;
        fresh.setUp(quiet);
        fresh.setUp([limitSec = settingSec](SettingsModel& settings) {
            settings.maxDeferralSec = limitSec;
        });
        fresh.meetingActive = true;
        TimerEngine& engine = fresh.launch(1000, 9000);
        fresh.run(1000 + heldSec - 1);
        EXPECT_EQ(fresh.take(), (Events{"1000 toast held"})) << settingSec;
        fresh.run(1);
        const std::string at = std::to_string(1000 + heldSec);
        EXPECT_EQ(fresh.take(), (Events{at + " hold of eye dropped", at + " toast dropped"}));
        EXPECT_FALSE(engine.isDeferring());
        ASSERT_EQ(fresh.log.size(), 1U);
        EXPECT_EQ(fresh.log[0].outcome, BreakLogEntry::Outcome::deferred);
        EXPECT_EQ(fresh.log[0].kind, BreakKind::eye);
        EXPECT_EQ(fresh.log[0].endedAt, fresh.runLoop.wallNow());
        EXPECT_EQ(fresh.log[0].startedAt, fresh.runLoop.wallNow() - wallSec(heldSec));
    }
}

TEST_F(EngineBreakTest, BodyBreakThatTakesAnEyeBreakInOpensWhereTheMeetingIsOver) {
    bench.meetingActive = true;
    TimerEngine& engine = bench.launch(1000, 1500);
    bench.run(1499);
    EXPECT_EQ(bench.take(), (Events{"1000 toast held"}));
    bench.meetingActive = false;  // and nobody has looked since
    bench.run(1);
    EXPECT_EQ(bench.take(),
              (Events{"1500 toast merged 1", "1500 hold of eye folded", "1500 open body +0"}));
    EXPECT_FALSE(engine.isDeferring());
    EXPECT_TRUE(engine.eyeMergedIntoBody());
    bench.finishMeetings();
    bench.run(60);
    EXPECT_EQ(bench.take(), Events{}) << "one break, once";
}

TEST_F(EngineBreakTest, TheEndOfAMeetingOpensNoBreakOfAnEarlierHold) {
    bench.meetingActive = true;
    TimerEngine& engine = bench.launch(1000, 9000);
    bench.run(1000);
    const auto first = std::exchange(bench.meetingCompletions, {});
    ASSERT_EQ(first.size(), 1U);
    engine.startNow(BreakKind::eye);
    bench.run(1000);
    EXPECT_EQ(bench.take(), (Events{"1000 toast held", "1000 hold of eye cancelled",
                                    "1000 open eye +0", "2000 toast held"}));
    bench.meetingActive = false;
    first.front()();
    EXPECT_EQ(bench.take(), Events{});
    bench.finishMeetings();
    EXPECT_EQ(bench.take(), (Events{"2000 hold of eye opened", "2000 open eye +0"}));
}

}  // namespace ostrel
