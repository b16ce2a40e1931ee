#include <gtest/gtest.h>

#include "support/overlay_bench.h"

namespace ostrel {

struct OverlaySessionTest : ::testing::Test {
    OverlayBench bench;
};

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

TEST_F(OverlaySessionTest, FadeOutOfAnEarlierBreakNeverClosesALaterOne) {
    bench.overlay().present(BreakKind::eye, 5, 0);
    bench.run(5);
    EXPECT_TRUE(bench.overlay().press(OverlayAction::done));
    bench.overlay().present(BreakKind::eye, 1, 0);
    bench.run(1.5);  // when the first one was to fade; the second is at zero by now
    EXPECT_TRUE(*bench.overlay().activeSession());
    bench.run(1);
    EXPECT_FALSE(*bench.overlay().activeSession());
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

}  // namespace ostrel
