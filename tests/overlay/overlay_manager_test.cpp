#include <gtest/gtest.h>

#include "support/overlay_bench.h"

namespace ostrel {

using Painting = RecordingWindows::Painting;

struct OverlayWindowsTest : ::testing::Test {
    OverlayWindowsTest() { bench.displays().set({kLeft, kRight}, 1); }

    // "1p 2s*": display and role of each window; * has the keyboard, - fades.
    std::string windows() {
        std::string text;
        for (const auto& window : bench.windows().onScreen()) {
            text += (text.empty() ? "" : " ") + std::to_string(window.displayID) +
                    (window.role == Role::primary ? "p" : "s") + (window.hasKeyboard ? "*" : "") +
                    (window.isFading ? "-" : "");
        }
        return text;
    }
    void present() { bench.overlay().present(BreakKind::eye, 20, 0); }

    const Displays::Display kLeft{1, {0, 0, 1920, 1080}};
    const Displays::Display kRight{2, {1920, 0, 1280, 1024}};
    const Displays::Display kThird{3, {3200, 0, 800, 600}};
    OverlayBench bench;
};

TEST_F(OverlayWindowsTest, DisplaysComeAndGoUnderABreakAndTheMainOneHasTheWholeView) {
    using List = std::vector<Displays::Display>;
    const struct {
        List displays;
        std::optional<std::uint32_t> mainID;
        const char* windows;
    } cases[] = {
        {{kLeft, kRight}, 2, "1s 2p*"},
        {{kLeft, kRight, kThird}, 2, "1s 2p* 3s"},
        {{kLeft, kThird}, 1, "1p* 3s"},
        {{kThird}, 3, "3p*"},
        {{}, std::nullopt, ""},
        {{kLeft, kRight}, 9, "1p* 2s"},  // a main display that is not there
        {{kLeft, kRight}, std::nullopt, "1p* 2s"},
    };
    bench.displays().set({kLeft, kRight}, 2);
    present();
    for (const auto& [displays, mainID, expected] : cases) {
        bench.displays().set(displays, mainID);
        EXPECT_EQ(windows(), expected);
        bench.run(1);
    }
    EXPECT_EQ(bench.windows().madeCount(), 5) << "windows that stay are the same ones";
    EXPECT_EQ((*bench.overlay().activeSession())->remainingSec, 13) << "the countdown goes on";
}

TEST_F(OverlayWindowsTest, LockedSessionHasNoWindowsAndTheBreakGoesOn) {
    Published<bool>& isOnScreen = bench.systemEvents().isSessionOnScreen;
    bench.windows().setPainting(Painting::onRequest);
    present();
    bench.run(2);
    isOnScreen.set(false);
    EXPECT_EQ(windows(), "");
    bench.run(10);
    isOnScreen.set(true);
    EXPECT_EQ(windows(), "1p 2s");
    EXPECT_EQ((*bench.overlay().activeSession())->remainingSec, 8);
    bench.run(OverlayManager::kFirstPaintLimitSec);
    EXPECT_FALSE(bench.overlay().activeSession()->has_value()) << "the watchdog is back as well";

    isOnScreen.set(false);
    present();
    bench.displays().set({kLeft, kRight, kThird}, 1);
    EXPECT_EQ(windows(), "") << "nor does a break that begins meanwhile";
    bench.run(20);
    EXPECT_EQ((*bench.overlay().activeSession())->remainingSec, 0);
}

TEST_F(OverlayWindowsTest, TheKeyboardIsTakenAtThePrimaryWindowsFirstPaintWhichMustCome) {
    bench.windows().setPainting(Painting::onRequest);
    present();
    bench.windows().paint(2);
    EXPECT_EQ(windows(), "1p 2s");
    bench.windows().paint(1);
    EXPECT_EQ(windows(), "1p* 2s");
    bench.overlay().close(CloseReason::skipped);

    present();
    bench.take();
    bench.run(2.9);
    EXPECT_EQ(windows(), "1p 2s");
    bench.run(0.1);
    EXPECT_EQ(bench.take(), (Events{"3 close eye forcedBySleep"}));
    bench.run(1);
    EXPECT_EQ(windows(), "");
}

TEST_F(OverlayWindowsTest, WindowsFadeAfterTheCloseAndTheNextBreakDoesNotWaitForThem) {
    present();
    bench.overlay().close(CloseReason::skipped);
    EXPECT_FALSE(*bench.overlay().activeSession()) << "over before the fade-out";
    bench.run(0.59);
    EXPECT_EQ(windows(), "1p- 2s-");
    bench.run(0.01);
    EXPECT_EQ(windows(), "");

    present();
    bench.overlay().close(CloseReason::skipped);
    bench.run(0.3);
    present();
    bench.run(1);
    EXPECT_EQ(windows(), "1p* 2s") << "the fade of the earlier break takes nothing along";
}

TEST(OverlaySession, ObserverMayCloseTheBreakAtAnyMoment) {
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

TEST(OverlaySession, FadeOutOfAnEarlierBreakNeverClosesALaterOne) {
    OverlayBench bench;
    bench.overlay().present(BreakKind::eye, 5, 0);
    bench.run(5);
    EXPECT_TRUE(bench.overlay().press(OverlayAction::done));
    bench.overlay().present(BreakKind::eye, 1, 0);
    bench.run(1.5);  // when the first one was to fade; the second is at zero by now
    EXPECT_TRUE(*bench.overlay().activeSession());
    bench.run(1);
    EXPECT_FALSE(*bench.overlay().activeSession());
}

TEST(OverlaySession, KeysDoWhatTheyMay) {
    constexpr std::uint32_t kEscape = 53, kReturn = 36, kSpace = 49, kP = 35, kOther = 12;
    struct {
        std::uint32_t key;
        double afterSec;
        bool strict;
        std::int64_t postpones;
        KeyOutcome outcome;
    } const cases[] = {
        {kEscape, 1, false, 1, KeyOutcome::skip},     {kEscape, 20, true, 1, KeyOutcome::ignored},
        {kReturn, 19, false, 1, KeyOutcome::ignored}, {kReturn, 20, false, 1, KeyOutcome::done},
        {kSpace, 19, false, 1, KeyOutcome::ignored},  {kSpace, 20, true, 1, KeyOutcome::done},
        {kP, 1, true, 1, KeyOutcome::postpone},       {kP, 1, false, 0, KeyOutcome::ignored},
        {kOther, 1, false, 1, KeyOutcome::ignored},
    };
    for (const auto& [key, afterSec, strict, postpones, outcome] : cases) {
        OverlayBench bench;
        bench.setUp([&, isStrict = strict](SettingsModel& s) { s.strictMode = isStrict; });
        bench.postponesLeft = postpones;
        bench.overlay().present(BreakKind::eye, 20, 0);
        bench.run(afterSec);
        EXPECT_EQ(bench.overlay().handleKey(key), outcome) << key << " after " << afterSec;
    }
}

}  // namespace ostrel
