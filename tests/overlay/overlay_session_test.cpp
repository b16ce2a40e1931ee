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

}  // namespace ostrel
