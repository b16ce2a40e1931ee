#include <gtest/gtest.h>

#include <algorithm>

#include "support/engine_bench.h"

namespace ostrel {

struct EngineHoldTest : ::testing::Test {
    EngineHoldTest() { bench.setUp(quiet); }
    // Eye breaks every 1000 seconds, the first of them held by a meeting.
    TimerEngine& holdEye(std::int64_t bodySec = 9000) {
        bench.meetingActive = true;
        TimerEngine& engine = bench.launch(1000, bodySec);
        bench.run(1000);
        EXPECT_EQ(bench.take(), (Events{"1000 toast held"}));
        return engine;
    }
    void mergingOff() {
        bench.setUp([](SettingsModel& settings) { settings.mergeNearbyBreaks = false; });
    }
    EngineBench bench;
};

TEST_F(EngineHoldTest, HoldLastsItsLimitAndAtLeastAMinute) {
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
        fresh.addPenalty(90);
        fresh.run(1000 + heldSec - 1);
        EXPECT_EQ(fresh.take(), (Events{"1000 toast held"})) << settingSec;
        fresh.run(1);
        const std::string at = std::to_string(1000 + heldSec);
        EXPECT_EQ(fresh.take(), (Events{at + " hold of eye dropped", at + " toast dropped"}));
        EXPECT_FALSE(engine.isDeferring());
        EXPECT_EQ(fresh.penaltyPool(), 90) << "a dropped break takes nothing";
        ASSERT_EQ(fresh.log.size(), 1U);
        EXPECT_EQ(fresh.log[0].outcome, BreakLogEntry::Outcome::deferred);
        EXPECT_EQ(fresh.log[0].kind, BreakKind::eye);
        EXPECT_EQ(fresh.log[0].endedAt, fresh.runLoop.wallNow());
        EXPECT_EQ(fresh.log[0].startedAt, fresh.runLoop.wallNow() - wallSec(heldSec));
    }
}

TEST_F(EngineHoldTest, BodyBreakTakesOverTheHoldOfAnEyeBreakWithItsStart) {
    TimerEngine& engine = holdEye(1500);
    bench.run(500);
    EXPECT_EQ(bench.take(), (Events{"1500 toast merged 1", "1500 hold of eye folded"}));
    EXPECT_TRUE(engine.eyeMergedIntoBody());
    bench.run(400);
    EXPECT_EQ(bench.take(), (Events{"1900 hold of body dropped", "1900 toast dropped"}));
    EXPECT_EQ(engine.state()->eye.remainingSec, 59) << "the folded eye break follows in a minute";
    ASSERT_EQ(bench.log.size(), 1U);
    EXPECT_EQ(bench.log[0].kind, BreakKind::body);
}

TEST_F(EngineHoldTest, BodyBreakThatTakesAnEyeBreakInOpensWhereTheMeetingIsOver) {
    TimerEngine& engine = holdEye(1500);
    bench.run(499);
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

TEST_F(EngineHoldTest, BodyBreakWaitsAtZeroUntilTheScreenIsFree) {
    TimerEngine& engine = bench.launch(5000, 100);
    bench.overlayPresented = true;
    bench.run(250);
    EXPECT_EQ(engine.state()->body.remainingSec, 0);
    EXPECT_EQ(bench.take(), Events{});
    bench.overlayPresented = false;
    bench.run(1);
    EXPECT_EQ(bench.take(), (Events{"251 open body +0"}));
    EXPECT_EQ(engine.state()->body.remainingSec, 100);
}

TEST_F(EngineHoldTest, WithoutMergingAnEyeBreakWaitsForAHeldBodyBreak) {
    mergingOff();
    bench.meetingActive = true;
    TimerEngine& engine = bench.launch(1000, 500);
    bench.run(1200);
    EXPECT_EQ(engine.state()->eye.remainingSec, 0);
    bench.finishMeetings();
    bench.overlayPresented = true;
    bench.run(100);
    EXPECT_EQ(bench.take(),
              (Events{"500 toast held", "1200 hold of body opened", "1200 open body +0"}));
    EXPECT_FALSE(engine.eyeMergedIntoBody());
    bench.overlayPresented = false;
    bench.run(1);
    EXPECT_EQ(bench.take(), (Events{"1301 open eye +0"}));
}

TEST_F(EngineHoldTest, WaitingEyeBreakIsStillWaitingAfterAPauseAndGoneAfterItsOwnStart) {
    mergingOff();
    bench.meetingActive = true;
    TimerEngine& engine = bench.launch(1000, 500);
    bench.run(1100);
    engine.pause(PauseReason::user);
    bench.meetingActive = false;
    engine.endPause(PauseReason::user);
    bench.take();
    bench.run(1);
    EXPECT_EQ(bench.take(), (Events{"1101 open eye +0"}));

    bench.meetingActive = true;
    TimerEngine& relaunched = bench.launch(1000, 500);
    bench.run(1100);
    bench.meetingActive = false;
    bench.take();
    relaunched.startNow(BreakKind::eye);
    bench.run(10);
    EXPECT_EQ(bench.take(), (Events{"2201 hold of body cancelled", "2201 open eye +0"}));
    EXPECT_EQ(relaunched.state()->eye.remainingSec, 990);
}

TEST_F(EngineHoldTest, PauseStartNowAndSwitchingOffCancelTheHoldForGood) {
    const std::pair<const char*, std::function<void(EngineBench&)>> enders[] = {
        {"pause", [](EngineBench& b) { b.engine().pause(PauseReason::schedule); }},
        {"start now", [](EngineBench& b) { b.engine().startNow(BreakKind::body); }},
        {"off", [](EngineBench& b) { b.setUp([](SettingsModel& s) { s.ostrelEnabled = false; }); }},
    };
    for (const auto& [name, end] : enders) {
        EngineBench fresh;
        fresh.setUp(quiet);
        fresh.meetingActive = true;
        TimerEngine& engine = fresh.launch(1000, 9000);
        fresh.run(1000);
        EXPECT_FALSE(engine.postpone(BreakKind::eye)) << "a held break cannot be postponed";
        fresh.take();
        end(fresh);
        const Events events = fresh.take();
        EXPECT_EQ(std::count(events.begin(), events.end(), "1000 hold of eye cancelled"), 1)
            << name;
        fresh.finishMeetings();
        EXPECT_EQ(fresh.take(), Events{}) << name;
        EXPECT_TRUE(fresh.log.empty()) << name;
    }
}

}  // namespace ostrel
