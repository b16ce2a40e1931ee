#include <gtest/gtest.h>

#include "support/engine_bench.h"

namespace ostrel {

struct EngineBreakTest : ::testing::Test {
    EngineBreakTest() { bench.setUp(quiet); }
    EngineBench bench;
};

// The eye break falls due at second 1200: it merges as many seconds before the body break as both
// last together.
TEST_F(EngineBreakTest, FoldsAnEyeBreakThatComesCloseEnoughBeforeTheBodyBreak) {
    struct {
        std::int64_t gapSec;
        Events events;
        std::int64_t eyeDurationSec = 120;
        bool isWanted = true;
    } const cases[] = {
        {1, {"1200 toast merged 1", "1200 open body"}},
        {60, {"1200 toast merged 1"}},
        {61, {"1200 toast merged 2"}},
        {420, {"1200 toast merged 7"}},
        {421, {"1200 open eye"}},
        {320, {"1200 toast merged 6"}, 20},
        {321, {"1200 open eye"}, 20},
        {60, {"1200 open eye"}, 120, false},
    };
    for (const auto& [gapSec, events, eyeDurationSec, isWanted] : cases) {
        EngineBench fresh;
        fresh.setUp([eyeSec = eyeDurationSec, merges = isWanted](SettingsModel& settings) {
            quiet(settings);
            settings.eyeBreakDurationSec = eyeSec;
            settings.mergeNearbyBreaks = merges;
        });
        TimerEngine& engine = fresh.launch(1200, 1199 + gapSec);
        fresh.run(1200);
        EXPECT_EQ(fresh.take(), events) << gapSec;
        EXPECT_EQ(engine.eyeMergedIntoBody(), events.front() != "1200 open eye") << gapSec;
        EXPECT_EQ(engine.state()->eye.remainingSec, 1200) << gapSec;
    }
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
                                    "1000 open eye", "2000 toast held"}));
    bench.meetingActive = false;
    first.front()();
    EXPECT_EQ(bench.take(), Events{});
    bench.finishMeetings();
    EXPECT_EQ(bench.take(), (Events{"2000 hold of eye opened", "2000 open eye"}));
    bench.meetingActive = true;
    bench.run(1000 + 900);
    EXPECT_EQ(bench.take(),
              (Events{"3000 toast held", "3900 hold of eye dropped", "3900 toast dropped"}));
}

}  // namespace ostrel
