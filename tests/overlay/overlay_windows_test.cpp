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

TEST_F(OverlayWindowsTest, CoversEveryDisplayAndShowsTheWholeBreakOnTheMainOne) {
    bench.displays().set({kLeft, kRight}, 2);
    present();
    EXPECT_EQ(windows(), "1s 2p*");
    EXPECT_EQ(*bench.overlay().primaryDisplayID(), 2U);
    EXPECT_EQ(bench.windows().onScreen()[1].frame, kRight.frame);
}

TEST_F(OverlayWindowsTest, MainDisplayThatIsNotThereLeavesTheFirstAsPrimary) {
    for (const std::optional<std::uint32_t> mainID :
         {std::optional(9U), std::optional<std::uint32_t>()}) {
        OverlayBench fresh;
        fresh.displays().set({kLeft, kRight}, mainID);
        fresh.overlay().present(BreakKind::eye, 20, 0);
        EXPECT_EQ(*fresh.overlay().primaryDisplayID(), 1U);
    }
}

TEST_F(OverlayWindowsTest, DisplaysComeAndGoWithoutTouchingTheOthersOrTheCountdown) {
    present();
    bench.run(5);
    bench.displays().set({kLeft, kRight, kThird}, 1);
    EXPECT_EQ(windows(), "1p* 2s 3s");
    bench.displays().set({kLeft, kThird}, 1);
    EXPECT_EQ(windows(), "1p* 3s");
    EXPECT_EQ(bench.windows().madeCount(), 3) << "windows that stay are the same ones";
    EXPECT_EQ((*bench.overlay().activeSession())->remainingSec, 15);
    bench.run(5);
    EXPECT_EQ((*bench.overlay().activeSession())->remainingSec, 10);
}

TEST_F(OverlayWindowsTest, PrimaryRoleAndKeyboardMoveWhenTheMainDisplayGoes) {
    present();
    bench.displays().set({kRight}, 2);
    EXPECT_EQ(windows(), "2p*");
    bench.displays().set({kLeft, kRight}, 1);
    EXPECT_EQ(windows(), "2s 1p*");
}

TEST_F(OverlayWindowsTest, BreakOutlivesAMomentWithoutAnyDisplay) {
    present();
    bench.displays().set({}, std::nullopt);
    EXPECT_EQ(windows(), "");
    bench.run(5);
    bench.displays().set({kLeft}, 1);
    EXPECT_EQ(windows(), "1p*");
    EXPECT_EQ((*bench.overlay().activeSession())->remainingSec, 15);
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

TEST_F(OverlayWindowsTest, NoKeyboardBeforeThePrimaryWindowHasPainted) {
    bench.windows().setPainting(Painting::onRequest);
    present();
    EXPECT_EQ(windows(), "1p 2s");
    bench.windows().paint(2);
    EXPECT_EQ(windows(), "1p 2s");
    bench.windows().paint(1);
    EXPECT_EQ(windows(), "1p* 2s");
}

TEST_F(OverlayWindowsTest, BreakThatNeverPaintsIsTakenDown) {
    bench.windows().setPainting(Painting::onRequest);
    present();
    bench.take();
    bench.run(2.9);
    EXPECT_EQ(windows(), "1p 2s");
    bench.run(0.1);
    EXPECT_EQ(bench.take(), (Events{"3 close eye forcedBySleep"}));
    bench.run(1);
    EXPECT_EQ(windows(), "");
}

TEST_F(OverlayWindowsTest, WindowsFadeAfterTheCloseAndAreGoneThen) {
    present();
    bench.overlay().close(CloseReason::skipped);
    EXPECT_FALSE(*bench.overlay().activeSession()) << "over before the fade-out";
    EXPECT_EQ(windows(), "1p- 2s-");
    bench.run(0.59);
    EXPECT_EQ(windows(), "1p- 2s-");
    bench.run(0.01);
    EXPECT_EQ(windows(), "");
}

TEST_F(OverlayWindowsTest, NextBreakDoesNotWaitForAFade) {
    present();
    bench.overlay().close(CloseReason::skipped);
    bench.run(0.3);
    present();
    EXPECT_EQ(windows(), "1p* 2s");
    bench.run(1);
    EXPECT_EQ(windows(), "1p* 2s") << "the fade of the earlier break takes nothing along";
}

TEST_F(OverlayWindowsTest, ReducedMotionTakesTheWindowsDownAtOnce) {
    bench.motion().setReduceMotion(true);
    present();
    bench.overlay().close(CloseReason::skipped);
    EXPECT_EQ(windows(), "");
}

TEST_F(OverlayWindowsTest, DisplayChangeWithoutABreakOpensNothing) {
    bench.displays().set({kThird}, 3);
    EXPECT_EQ(windows(), "");
}

}  // namespace ostrel
