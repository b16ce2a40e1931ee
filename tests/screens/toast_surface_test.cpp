#include "screens/toast_surface.h"

#include "menubar/toast_dispatcher.h"
#include "platform/virtual/virtual_devices.h"
#include "platform/virtual/virtual_run_loop.h"
#include "screens/gui.h"
#include "screens/overflow.h"

namespace ostrel {
namespace {

struct ToastSurfaceTest : ::testing::Test {
    VirtualRunLoop runLoop{wallTimeAt(0)};
    ToastDispatcher toasts{runLoop};
    VirtualMotionSettings motion;
    ToastSurface surface{toasts, motion, [] { return ToastCard::Shade::light; }};

    ToastSurfaceTest() { motion.setReduceMotion(true); }

    // What is on the screen; null without a toast.
    static QWidget* card() {
        QWidget* shown = nullptr;
        for (QWidget* window : QApplication::topLevelWidgets()) {
            if (window->isVisible() && window->objectName() == QLatin1String("toast.surface")) {
                EXPECT_EQ(shown, nullptr) << "one at a time";
                shown = window;
            }
        }
        return shown;
    }
    static std::string words() {
        const QWidget* window = card();
        return window ? window->findChild<ToastCard*>()->accessibleName().toStdString() : "none";
    }
    static void expectRoom(const LocalizedText& message) {
        inEveryLanguage([&message](std::string_view language) {
            QWidget* window = card();
            ASSERT_NE(window, nullptr) << language;
            EXPECT_EQ(words(), Texts::of(message).toStdString()) << language;
            EXPECT_EQ(overflowing(*window), "") << language;
        });
    }
};

TEST_F(ToastSurfaceTest, EveryToastOnTheScreenGoesOnInAnotherLanguageWithRoomForItsWords) {
    using Message = EngineToasts::Message;
    const std::pair<Message, std::optional<std::int64_t>> all[] = {
        {Message::merged, 4},        {Message::preBreakEye, 30},
        {Message::preBreakBody, 30}, {Message::pauseEnded, {}},
        {Message::breakHeld, {}},    {Message::postponeNoneLeft, {}},
        {Message::breakDropped, {}}, {Message::awayCreditBoth, 60},
        {Message::awayCreditEye, 2}, {Message::awayCreditBody, 60},
    };
    for (const auto& [message, argument] : all) {
        toasts.show(message, argument, {[] {}, [] {}});
        ASSERT_TRUE(toasts.currentToast()->has_value());
        expectRoom((*toasts.currentToast())->message);
        toasts.dismiss();
        EXPECT_EQ(words(), "none");
    }
    GentleCard gentle{BreakLogEntry::Kind::body, GentleCard::Stage::counting, 240, 300, 40, {}, {}};
    gentle.actions = {OverlayAction::skip, OverlayAction::postpone};
    const std::string id = toasts.showCard(gentle, [](OverlayAction) {});
    expectRoom((*toasts.currentToast())->message);
    gentle.stage = GentleCard::Stage::asking;
    gentle.actions = {OverlayAction::gentleDone, OverlayAction::gentleSkip};
    toasts.updateCard(id, gentle);
    expectRoom((*toasts.currentToast())->message);
}

TEST_F(ToastSurfaceTest, NothingIsShownWhileTheScreenIsCovered) {
    toasts.show(EngineToasts::Message::breakHeld, {}, {});
    const std::string told = words();
    surface.setCovered(true);
    EXPECT_EQ(words(), "none");
    surface.setCovered(false);
    EXPECT_EQ(words(), told);
}

}  // namespace
}  // namespace ostrel
