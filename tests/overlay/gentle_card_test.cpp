#include <gtest/gtest.h>

#include "support/overlay_bench.h"

namespace ostrel {

using Stage = GentleCard::Stage;
using Actions = std::vector<OverlayAction>;

struct GentleCardTest : ::testing::Test {
    GentleCardTest() {
        bench.setUp([](SettingsModel& settings) {
            settings.eyePresentation = BreakPresentation::gentle;
            settings.bodyPresentation = BreakPresentation::gentle;
        });
    }
    OverlayBench bench;
};

TEST_F(GentleCardTest, CountsDownWithoutAnyWindow) {
    bench.overlay().present(BreakKind::eye, 20, 30);
    EXPECT_EQ(bench.take(), (Events{"0 card", "0 start chime", "0 tap", "0 penalty 30"}));
    EXPECT_TRUE(bench.overlay().openWindows().empty());
    EXPECT_EQ(bench.lastCard, (GentleCard{BreakKind::eye, Stage::counting, 50, 50, 90, std::nullopt,
                                          Actions{OverlayAction::skip, OverlayAction::postpone}}));
    bench.displays().set({}, std::nullopt);
    bench.run(10);
    EXPECT_EQ(bench.lastCard.remainingSec, 40);
    EXPECT_EQ(bench.take(), Events{}) << "nothing takes it down for want of a painted window";
    bench.pressCard(OverlayAction::skip);
    EXPECT_EQ(bench.take(), (Events{"10 log eye skipped 50 +30 over 10", "10 skip of eye", "10 tap",
                                    "10 no card", "10 close eye skipped"}));
}

TEST_F(GentleCardTest, WhoeverKeptStillForPracticallyAllOfItHasRested) {
    struct Case {
        std::int64_t totalSec;
        double idleSec;
        bool isRested;
    };
    for (const auto& [totalSec, idleSec, isRested] :
         {Case{20, 16, true}, Case{20, 15.9, false}, Case{300, 295, true}, Case{300, 294.9, false},
          Case{3, 2, true}, Case{3, 1.9, false}}) {
        bench.overlay().present(BreakKind::eye, totalSec, 0);
        bench.run(static_cast<double>(totalSec) - 1);
        bench.take();
        bench.inputIdle().setReading([idle = idleSec] { return idle; });
        bench.run(1);
        EXPECT_EQ(bench.lastCard.stage, isRested ? Stage::rested : Stage::asking)
            << totalSec << " " << idleSec;
        EXPECT_EQ(bench.take().size(), isRested ? 1U : 0U) << "the end chime";
        bench.run(1.5);
        EXPECT_EQ(bench.overlay().activeSession()->has_value(), !isRested);
        bench.overlay().close(CloseReason::forcedBySleep);
        bench.take();
    }
}

TEST_F(GentleCardTest, QuestionIsAnsweredOrCountsAsAGentleSkip) {
    const auto ask = [this](BreakKind kind) {
        bench.overlay().present(kind, 20, 0);
        bench.run(20);
        EXPECT_EQ(bench.lastCard.actions,
                  (Actions{OverlayAction::gentleDone, OverlayAction::gentleSkip}));
        bench.take();
    };
    ask(BreakKind::body);
    EXPECT_FALSE(bench.overlay().press(OverlayAction::skip)) << "no button says so any more";
    bench.pressCard(OverlayAction::gentleDone);
    EXPECT_EQ(bench.take(), (Events{"20 log body completed 20 +0 over 20", "20 body completed",
                                    "20 no card", "20 close body done"}));
    ask(BreakKind::eye);
    bench.pressCard(OverlayAction::gentleSkip);
    EXPECT_EQ(bench.take(), (Events{"40 log eye skipped 20 +0 over 20", "40 skip counted",
                                    "40 no card", "40 close eye skippedGently"}));
    ask(BreakKind::eye);
    bench.run(59.9);
    EXPECT_EQ(bench.take(), Events{});
    bench.run(0.1);
    EXPECT_EQ(bench.take(), (Events{"120 log eye skipped 20 +0 over 80", "120 skip counted",
                                    "120 no card", "120 close eye skippedGently"}));
}

TEST_F(GentleCardTest, OldQuestionNeverClosesANewerBreak) {
    bench.overlay().present(BreakKind::eye, 20, 0);
    bench.run(30);
    bench.overlay().close(CloseReason::forcedByPause);
    bench.overlay().present(BreakKind::eye, 300, 0);
    bench.run(60);
    EXPECT_TRUE(bench.overlay().activeSession()->has_value());
}

}  // namespace ostrel
