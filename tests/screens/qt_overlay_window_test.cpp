#include "screens/qt_overlay_window.h"

#include <QAbstractButton>
#include <QPushButton>

#include "screens/overflow.h"
#include "screens/overlay_text.h"
#include "screens/overlay_view.h"
#include "screens/surface_bench.h"
#include "screens/texts/texts.h"

namespace ostrel {

struct QtOverlayWindowTest : SurfaceTest {
    OverlaySurface& present(std::int64_t durationSec = 60, std::int64_t penaltySec = 0) {
        return SurfaceTest::present(BreakKind::eye, durationSec, penaltySec);
    }
    static QAbstractButton* button(const OverlaySurface& surface, const char* name) {
        return surface.findChild<QAbstractButton*>(QString::fromUtf8(name));
    }
    // "done- skip postpone": the actions that are there; - cannot be pressed.
    static std::string actions(const OverlaySurface& surface) {
        std::string text;
        for (const auto action : enumNames(OverlayAction{})) {
            const std::string name = "ostrel.overlay.action." + std::string(action);
            const QAbstractButton* found = button(surface, name.c_str());
            if (found && found->isVisible()) {
                text += (text.empty() ? "" : " ") + std::string(action) +
                        (found->isEnabled() ? "" : "-");
            }
        }
        return text;
    }
    static std::string focused(const OverlaySurface& surface) {
        const QWidget* widget = surface.focusWidget();
        return widget && widget != &surface ? widget->objectName().toStdString() : "nothing";
    }
};

TEST_F(QtOverlayWindowTest, ShowsTheActionsThatTheManagerOffersAndEnables) {
    const struct {
        bool isStrict;
        std::int64_t postponesLeft;
        double afterSec;
        const char* actions;
    } cases[] = {
        {false, 1, 0, "done- skip postpone"}, {true, 1, 0, "done- postpone"},
        {false, 0, 0, "done- skip"},          {true, 0, 19, "done-"},
        {false, 1, 20, "done skip postpone"}, {true, 0, 20, "done"},
    };
    for (const auto& [isStrict, postponesLeft, afterSec, expected] : cases) {
        bench.setUp([isStrict = isStrict](SettingsModel& model) { model.strictMode = isStrict; });
        bench.postponesLeft = postponesLeft;
        OverlaySurface& surface = present(20);
        bench.run(afterSec);
        EXPECT_EQ(actions(surface), expected);
        bench.overlay().close(CloseReason::forcedBySleep);
    }
}

TEST_F(QtOverlayWindowTest, StrayAndHeldKeysPressNothingUntilAButtonIsChosen) {
    OverlaySurface& surface = present();
    EXPECT_EQ(focused(surface), "nothing");
    for (const int key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter, Qt::Key_X}) {
        sendKey(surface, key);
    }
    // Down since before the break.
    for (const int key : {Qt::Key_Escape, Qt::Key_P, Qt::Key_Space}) {
        sendKey(surface, key, Repeat::automatic);
    }
    EXPECT_EQ(bench.take(), Events{});
    sendKey(surface, Qt::Key_Tab);
    EXPECT_EQ(focused(surface), "ostrel.overlay.action.skip");
    bench.run(60);
    sendKey(surface, Qt::Key_Space);
    const Events events = bench.take();
    ASSERT_FALSE(events.empty());
    EXPECT_EQ(events.back(), "60 close eye done") << "not the skip that has the focus";
}

TEST_F(QtOverlayWindowTest, ABannerSaysWhatASkipCostAndHandsTheFocusToNobody) {
    OverlaySurface& surface = present(20, 40);
    const auto* banner = surface.findChild<QWidget*>(QStringLiteral("ostrel.overlay.banner"));
    EXPECT_TRUE(banner->isVisible());
    EXPECT_EQ(banner->accessibleName().toStdString(),
              "You skipped 2 breaks: this one is 40 seconds longer");
    QAbstractButton* close = button(surface, "ostrel.overlay.banner.close");
    close->setFocus();
    sendKey(surface, Qt::Key_Space);
    EXPECT_FALSE(banner->isVisible());
    EXPECT_EQ(focused(surface), "nothing");
}

TEST_F(QtOverlayWindowTest, TheBreakOnTheScreenGoesOnInAnotherLanguageWithRoomForItsWords) {
    OverlaySurface& surface = present(60, 40);
    inEveryLanguage([&surface](std::string_view language) {
        EXPECT_EQ(actions(surface), "done- skip postpone") << language;
        EXPECT_EQ(button(surface, "ostrel.overlay.action.skip")->text(), Texts::of("action.skip"));
        for (const QWidget* piece : surface.findChildren<QWidget*>()) {
            const auto* line = dynamic_cast<const OverlayText*>(piece);
            if (line && line->isVisible()) {
                EXPECT_LE(line->fullWidth(), line->width()) << line->text().toStdString();
                EXPECT_LE(line->heightForWidth(line->width()), line->height()) << language;
            } else if (qobject_cast<const QPushButton*>(piece)) {
                EXPECT_LE(piece->sizeHint().width(), piece->width()) << language;
            }
        }
    });
}

TEST_F(QtOverlayWindowTest, MinimalShowsTheActionsToAPointerThatMoves) {
    bench.setUp([](SettingsModel& model) { model.overlayStyle = OverlayStyle::minimal; });
    OverlaySurface& surface = present();
    const QAbstractButton* skip = button(surface, "ostrel.overlay.action.skip");
    const auto takesClicks = [&skip] {
        return !skip->testAttribute(Qt::WA_TransparentForMouseEvents);
    };
    EXPECT_FALSE(takesClicks());
    for (const QPointF place : {QPointF(10, 10), QPointF(12, 11), QPointF(40, 40)}) {
        EXPECT_FALSE(takesClicks());
        QHoverEvent hover(QEvent::HoverMove, place, place, place);
        QCoreApplication::sendEvent(&surface.view(), &hover);
    }
    EXPECT_TRUE(takesClicks());
}

TEST_F(QtOverlayWindowTest, NothingIsLeftOnceABreakHasFadedOrEndedAtOnce) {
    const auto surfaces = [] {
        int count = 0;
        for (const QWidget* widget : QApplication::topLevelWidgets()) {
            count += dynamic_cast<const OverlaySurface*>(widget) ? 1 : 0;
        }
        return count;
    };
    for (const bool reducesMotion : {true, false}) {
        bench.motion().setReduceMotion(reducesMotion);
        const OverlaySurface& surface = present();
        EXPECT_EQ(surfaces(), 1);
        bench.overlay().close(CloseReason::skipped);
        EXPECT_EQ(surface.isVisible(), !reducesMotion);
        bench.run(1);
        EXPECT_TRUE(runUntil([&surfaces] { return surfaces() == 0; }));
    }
}

}  // namespace ostrel
