#include <gtest/gtest.h>

#include "support/overlay_bench.h"

namespace ostrel {
namespace {

using Outcome = BreakLogEntry::Outcome;

}  // namespace

struct OverlaySessionTest : ::testing::Test {
    // A break that has been on the screen for `seconds`.
    void presentAndRun(BreakKind kind, std::int64_t durationSec, double seconds) {
        bench.overlay().present(kind, durationSec, 0);
        bench.run(seconds);
    }
    OverlayBench bench;
};

TEST_F(OverlaySessionTest, StartsWithBaseAndPenaltyAndTellsThePenalty) {
    bench.setUp([](SettingsModel& settings) { settings.customBreakMessages = {"a", "b", "c"}; });
    for (int i = 0; i < 7; ++i) {
        bench.overlay().present(BreakKind::eye, 20, 0);
        bench.overlay().close(CloseReason::forcedBySleep);
    }
    bench.take();
    bench.overlay().present(BreakKind::eye, 20, 40);
    const ActiveOverlaySession& session = **bench.overlay().activeSession();
    EXPECT_EQ(session, (ActiveOverlaySession{BreakKind::eye, 20, 40, bench.now(), 60, 0, 7, "b"}));
    EXPECT_EQ(session.totalSec(), 60);
    EXPECT_EQ(bench.take(), (Events{"0 start chime", "0 tap", "0 penalty 40"}));
    bench.overlay().close(CloseReason::forcedBySleep);
    bench.take();

    bench.setUp([](SettingsModel& settings) { settings.customBreakMessages = {}; });
    bench.overlay().present(BreakKind::eye, 20, 0);
    EXPECT_FALSE((*bench.overlay().activeSession())->message);
    EXPECT_EQ(bench.take(), (Events{"0 start chime", "0 tap"}));
}

TEST_F(OverlaySessionTest, EntryCarriesThePenaltyAndTheWholeLength) {
    bench.overlay().present(BreakKind::eye, 20, 40);
    bench.overlay().dismissBanner();
    EXPECT_EQ(*bench.overlay().recentSkipCount(), 2);
    bench.run(60);
    bench.take();
    EXPECT_TRUE(bench.overlay().press(OverlayAction::done));
    EXPECT_EQ(bench.take(), (Events{"60 log eye completed 60 +40 over 60", "60 eye completed",
                                    "60 close eye done"}));
    bench.overlay().present(BreakKind::eye, 20, 40);
    EXPECT_FALSE(*bench.overlay().bannerDismissed());
}

TEST_F(OverlaySessionTest, RecordThatClosesTheBreakAgainChangesNothing) {
    bench.closesAgain = true;
    bench.overlay().present(BreakKind::eye, 20, 0);
    bench.take();
    bench.overlay().close(CloseReason::skipped);
    EXPECT_EQ(bench.take(), (Events{"0 log eye skipped 20 +0 over 0", "0 skip of eye", "0 tap",
                                    "0 close eye skipped"}));
}

TEST_F(OverlaySessionTest, ObserverMayCloseTheBreakAtAnyMoment) {
    for (const std::int64_t closeAt : {20, 19, 0}) {
        OverlayBench fresh;
        const auto closer = fresh.overlay().activeSession().onChange([&](const auto& session) {
            if (session && session->remainingSec == closeAt) {
                fresh.overlay().close(CloseReason::forcedByPause);
            }
        });
        fresh.overlay().present(BreakKind::eye, 20, 0);
        fresh.run(30);
        EXPECT_EQ(fresh.take().back(), std::to_string(20 - closeAt) + " close eye forcedByPause");
        EXPECT_FALSE(*fresh.overlay().activeSession());
    }
}

TEST_F(OverlaySessionTest, SecondBreakIsIgnoredWhileOneIsOnScreen) {
    bench.overlay().present(BreakKind::eye, 20, 0);
    bench.overlay().present(BreakKind::body, 300, 0);
    EXPECT_EQ((*bench.overlay().activeSession())->kind, BreakKind::eye);
}

TEST_F(OverlaySessionTest, FadesOutByItselfAShortWhileAfterZero) {
    presentAndRun(BreakKind::eye, 20, 19);
    EXPECT_EQ((*bench.overlay().activeSession())->remainingSec, 1);
    bench.take();
    bench.run(1);
    EXPECT_EQ(bench.take(), (Events{"20 end chime"}));
    bench.run(1.4);
    EXPECT_TRUE(*bench.overlay().activeSession());
    bench.run(0.1);
    EXPECT_EQ(bench.take(), (Events{"21.5 log eye autoFadeOut 20 +0 over 21.5",
                                    "21.5 eye completed", "21.5 close eye autoFade"}));
    EXPECT_FALSE(*bench.overlay().activeSession());
}

TEST_F(OverlaySessionTest, FadeOutOfAnEarlierBreakNeverClosesALaterOne) {
    presentAndRun(BreakKind::eye, 5, 5);
    EXPECT_TRUE(bench.overlay().press(OverlayAction::done));
    bench.overlay().present(BreakKind::eye, 1, 0);
    bench.run(1.5);  // when the first one was to fade; the second is at zero by now
    EXPECT_TRUE(*bench.overlay().activeSession());
    bench.run(1);
    EXPECT_FALSE(*bench.overlay().activeSession());
}

TEST_F(OverlaySessionTest, EachReasonHasItsEffects) {
    struct {
        BreakKind kind;
        CloseReason reason;
        Events events;
    } const cases[] = {
        {BreakKind::eye,
         CloseReason::skipped,
         {"10 log eye skipped 10 +0 over 10", "10 skip of eye", "10 tap", "10 close eye skipped"}},
        {BreakKind::body,
         CloseReason::skipped,
         {"10 log body skipped 10 +0 over 10", "10 skip of body", "10 tap",
          "10 close body skipped"}},
        {BreakKind::eye,
         CloseReason::done,
         {"10 log eye completed 10 +0 over 10", "10 eye completed", "10 close eye done"}},
        {BreakKind::body,
         CloseReason::done,
         {"10 log body completed 10 +0 over 10", "10 body completed", "10 close body done"}},
        {BreakKind::eye,
         CloseReason::postponed,
         {"10 log eye postponed 10 +0 over 10", "10 close eye postponed"}},
        {BreakKind::eye, CloseReason::forcedBySleep, {"10 close eye forcedBySleep"}},
        {BreakKind::body, CloseReason::forcedByPause, {"10 close body forcedByPause"}},
        {BreakKind::eye,
         CloseReason::skippedGently,
         {"10 log eye skipped 10 +0 over 10", "10 skip counted", "10 close eye skippedGently"}},
    };
    for (const auto& [kind, reason, events] : cases) {
        OverlayBench fresh;
        fresh.overlay().present(kind, 10, 0);
        fresh.run(10);
        fresh.take();
        fresh.overlay().close(reason);
        EXPECT_EQ(fresh.take(), events) << nameOf(reason);
        fresh.overlay().close(CloseReason::done);
        EXPECT_EQ(fresh.take(), Events{}) << "nothing is left to close";
    }
}

TEST_F(OverlaySessionTest, CompletedBodyBreakCreditsTheEyeBreakFoldedIntoIt) {
    bench.foldEyeIntoBody();
    presentAndRun(BreakKind::body, 5, 6.5);
    EXPECT_EQ(bench.take(), (Events{"0 start chime", "0 tap", "5 end chime",
                                    "6.5 log body autoFadeOut 5 +0 over 6.5", "6.5 body completed",
                                    "6.5 eye completed", "6.5 log eye completed 5 +0 over 6.5",
                                    "6.5 close body autoFade"}));
    EXPECT_FALSE(bench.engine().eyeMergedIntoBody());
}

TEST_F(OverlaySessionTest, BodyBreakCutShortBringsTheFoldedEyeBreakSoon) {
    const CloseReason reasons[] = {CloseReason::skipped, CloseReason::skippedGently,
                                   CloseReason::forcedBySleep, CloseReason::forcedByPause};
    for (const CloseReason reason : reasons) {
        OverlayBench fresh;
        fresh.foldEyeIntoBody();
        fresh.overlay().present(BreakKind::body, 300, 0);
        fresh.overlay().close(reason);
        EXPECT_EQ(fresh.engine().state()->eye.remainingSec, 60) << nameOf(reason);
    }
}

TEST_F(OverlaySessionTest, PostponedBreakIsBackInFiveMinutes) {
    bench.overlay().present(BreakKind::eye, 20, 0);
    EXPECT_TRUE(bench.overlay().press(OverlayAction::postpone));
    EXPECT_EQ(bench.engine().state()->eye.remainingSec, 300);
    bench.overlay().present(BreakKind::eye, 20, 0);
    EXPECT_FALSE(bench.overlay().offers(OverlayAction::postpone)) << "the ration is used up";
}

TEST_F(OverlaySessionTest, KeysDoWhatTheyMay) {
    constexpr std::uint32_t kEscape = 53, kReturn = 36, kSpace = 49, kP = 35, kOther = 12;
    struct {
        std::uint32_t key;
        double afterSec;
        bool strict;
        std::int64_t postpones;
        KeyOutcome outcome;
    } const cases[] = {
        {kEscape, 1, false, 1, KeyOutcome::skip},    {kEscape, 1, true, 1, KeyOutcome::ignored},
        {kEscape, 20, true, 1, KeyOutcome::ignored}, {kReturn, 19, false, 1, KeyOutcome::ignored},
        {kReturn, 20, false, 1, KeyOutcome::done},   {kSpace, 19, false, 1, KeyOutcome::ignored},
        {kSpace, 20, true, 1, KeyOutcome::done},     {kP, 1, false, 1, KeyOutcome::postpone},
        {kP, 1, true, 1, KeyOutcome::postpone},      {kP, 1, false, 0, KeyOutcome::ignored},
        {kOther, 1, false, 1, KeyOutcome::ignored},
    };
    for (const auto& [key, afterSec, strict, postpones, outcome] : cases) {
        OverlayBench fresh;
        fresh.setUp([&, isStrict = strict](SettingsModel& s) { s.strictMode = isStrict; });
        fresh.postponesLeft = postpones;
        EXPECT_EQ(fresh.overlay().handleKey(key), KeyOutcome::ignored) << "no break, no key";
        fresh.overlay().present(BreakKind::eye, 20, 0);
        fresh.run(afterSec);
        EXPECT_EQ(fresh.overlay().handleKey(key), outcome) << key << " after " << afterSec;
        EXPECT_EQ(fresh.overlay().activeSession()->has_value(), outcome == KeyOutcome::ignored);
    }
}

TEST_F(OverlaySessionTest, PauseAndSleepCloseTheBreakWithoutAnEntry) {
    bench.overlay().present(BreakKind::eye, 20, 0);
    bench.engine().pause(PauseReason::user);
    bench.overlay().present(BreakKind::eye, 20, 0);
    bench.systemEvents().willSleep.send();
    EXPECT_EQ(bench.take(), (Events{"0 start chime", "0 tap", "0 close eye forcedByPause",
                                    "0 start chime", "0 tap", "0 close eye forcedBySleep"}));
}

TEST_F(OverlaySessionTest, RunsWithoutAnyRecords) {
    OverlayBench bare(OverlayBench::Records::absent);
    bare.setUp([](SettingsModel& settings) { settings.customBreakMessages = {"only"}; });
    bare.overlay().present(BreakKind::body, 3, 0);
    EXPECT_EQ((*bare.overlay().activeSession())->message, "only");
    EXPECT_FALSE(bare.overlay().offers(OverlayAction::postpone));
    bare.run(5);
    EXPECT_EQ(bare.take(), (Events{"0 tap", "4.5 close body autoFade"}));
}

}  // namespace ostrel
