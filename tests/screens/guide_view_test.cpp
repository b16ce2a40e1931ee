#include "screens/guide_view.h"

#include <QAbstractButton>
#include <set>

#include "overlay/guided_moves.h"
#include "screens/countdown_ring.h"
#include "screens/gui.h"
#include "screens/overlay_surface.h"
#include "screens/overlay_text.h"
#include "screens/overlay_view.h"
#include "screens/qt_overlay_window.h"
#include "screens/qt_overlay_window_maker.h"
#include "support/overlay_bench.h"

namespace ostrel {

// Keys without a text stand for themselves: these words are 40 % longer than the longest of ours.
const GuidedMove kWordy{
    "quad_stretch", "", "Dehnung der Oberschenkelvorderseite",
    "Halten Sie sich an einem festen Gegenstand fest, umfassen Sie einen Fuß und ziehen Sie die "
    "Ferse behutsam in Richtung Gesäß, die Knie bleiben dabei nebeneinander. Eine halbe Minute "
    "lang "
    "auf jeder Seite, ohne Schmerz."};

struct GuideViewTest : ::testing::Test {
    GuideViewTest() {
        bench.displays().set({{1, {0, 0, 800, 600}}}, 1);
        bench.motion().setReduceMotion(true);
    }
    ~GuideViewTest() override {
        bench.overlay().close(CloseReason::forcedBySleep);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    OverlaySurface& present(BreakKind kind, std::int64_t durationSec, std::int64_t penaltySec = 0) {
        bench.overlay().present(kind, durationSec, penaltySec);
        auto& window = dynamic_cast<QtOverlayWindow&>(*bench.overlay().openWindows().front());
        EXPECT_TRUE(runUntil([&window] { return window.surface().isActiveWindow(); }));
        return window.surface();
    }
    static GuideView* guideOf(const OverlaySurface& surface) {
        return static_cast<GuideView*>(
            surface.findChild<QWidget*>(QStringLiteral("ostrel.overlay.guide")));
    }

    QtOverlayWindowMaker maker;
    OverlayBench bench{&maker};
};

TEST_F(GuideViewTest, ABodyBreakGoesOnToTheNextMoveEveryMinuteAndAnEyeBreakStays) {
    present(BreakKind::body, 510);
    bench.run(510);
    bench.overlay().close(CloseReason::done);  // nine moves on

    const GuideView* guide = guideOf(present(BreakKind::body, 180));
    EXPECT_EQ(guide->accessibleName().toStdString(), "Deep breaths");
    EXPECT_TRUE(guide->accessibleDescription().startsWith(QStringLiteral("Stand tall")));
    const std::pair<double, const char*> later[] = {
        {59, "Deep breaths"}, {1, "Neck rolls"}, {60, "Shoulder rolls"}, {60, "Shoulder rolls"}};
    for (const auto& [seconds, title] : later) {
        bench.run(seconds);
        EXPECT_EQ(guide->accessibleName().toStdString(), title);
    }
    bench.overlay().close(CloseReason::done);

    guide = guideOf(present(BreakKind::eye, 240));
    EXPECT_EQ(guide->accessibleName().toStdString(), "Far focus");
    bench.run(239);
    EXPECT_EQ(guide->accessibleName().toStdString(), "Far focus");
}

TEST_F(GuideViewTest, OnlyTheWholeViewInTheGuidedStyleHasIt) {
    const auto isShown = [](const OverlaySurface& surface) {
        const GuideView* guide = guideOf(surface);
        return guide && guide->isVisible();
    };
    OverlaySurface& surface = present(BreakKind::eye, 60);
    EXPECT_TRUE(isShown(surface));
    surface.setRole(Role::secondary);
    EXPECT_FALSE(isShown(surface));
    surface.setRole(Role::primary);
    EXPECT_TRUE(isShown(surface));
    bench.overlay().close(CloseReason::forcedBySleep);

    bench.setUp([](SettingsModel& model) { model.overlayStyle = OverlayStyle::minimal; });
    EXPECT_FALSE(isShown(present(BreakKind::eye, 60)));
}

TEST_F(GuideViewTest, ItMovesOnlyWhileSomebodyMaySeeItAndWants) {
    bench.motion().setReduceMotion(false);
    OverlaySurface& surface = present(BreakKind::body, 60);
    const GuideView* guide = guideOf(surface);
    EXPECT_TRUE(guide->isMoving());
    surface.setRole(Role::secondary);
    EXPECT_FALSE(guide->isMoving());
    surface.setRole(Role::primary);
    EXPECT_TRUE(guide->isMoving());
    bench.motion().setReduceMotion(true);
    EXPECT_TRUE(runUntil([guide] { return !guide->isMoving(); }));
    bench.motion().setReduceMotion(false);
    bench.run(1);
    EXPECT_TRUE(guide->isMoving());
    bench.run(59);
    EXPECT_FALSE(guide->isMoving()) << "the countdown is at zero";
}

TEST_F(GuideViewTest, TheNextMoveFadesInWhereTheOneBeforeFadedOut) {
    bench.motion().setReduceMotion(false);
    OverlayLook look = OverlayLook::of(OverlayTint::ink, {800, 600});
    GuideView guide(look, bench.motion(), nullptr);
    guide.resize(700, 200);
    const auto moves = GuidedMoveCatalog::moves(BreakKind::eye);
    const auto strongest = [&guide] {
        QImage picture(guide.size(), QImage::Format_ARGB32_Premultiplied);
        picture.fill(Qt::transparent);
        guide.render(&picture, QPoint(), QRegion(), QWidget::RenderFlags());
        int alpha = 0;
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                alpha = std::max(alpha, qAlpha(picture.pixel(x, y)));
            }
        }
        return alpha;
    };
    guide.setMove(moves[0]);
    guide.show();
    EXPECT_EQ(strongest(), 255);
    guide.setMove(moves[1]);
    EXPECT_EQ(guide.accessibleName(), QStringLiteral("Palming")) << "told at once";
    EXPECT_TRUE(runUntil([&strongest] { return strongest() < 128; }));
    EXPECT_TRUE(runUntil([&strongest] { return strongest() == 255; }));
}

// Everything that is drawn on the surface, with a name for it.
std::vector<std::pair<std::string, QRect>> piecesOf(const OverlaySurface& surface) {
    std::vector<std::pair<std::string, QRect>> pieces;
    const auto add = [&](const std::string& name, const QWidget& widget, QRect within) {
        if (widget.isVisible() && !within.isEmpty()) {
            pieces.emplace_back(name,
                                QRect(widget.mapTo(&surface, within.topLeft()), within.size()));
        }
    };
    for (const QWidget* child :
         surface.view().findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
        if (const auto* guide = dynamic_cast<const GuideView*>(child)) {
            const auto places = guide->places();
            add("figure", *guide, places[0]);
            add("move", *guide, places[1]);
            add("instruction", *guide, places[2]);
        } else if (const auto* text = dynamic_cast<const OverlayText*>(child)) {
            add("text " + text->text().left(12).toStdString(), *text, text->rect());
        } else {
            add(child->objectName().toStdString(), *child, child->rect());
        }
    }
    return pieces;
}

TEST_F(GuideViewTest, NothingOverlapsWhateverTheDisplayTheLanguageAndTheMessage) {
    bench.setUp([](SettingsModel& model) {
        model.customBreakMessages = {
            "Stand up, water the plants by the window, and say hello to "
            "somebody whom you have not spoken to all morning"};
    });
    OverlaySurface& surface = present(BreakKind::body, 300, 180);
    for (const bool isWordy : {false, true}) {
        if (isWordy) {
            guideOf(surface)->setMove(kWordy);
        }
        for (const auto direction : {Qt::LeftToRight, Qt::RightToLeft}) {
            surface.setLayoutDirection(direction);
            for (const QSize size : {QSize(1024, 768), QSize(1280, 1024), QSize(1366, 768),
                                     QSize(1920, 1080), QSize(3840, 2160), QSize(1080, 1920),
                                     QSize(768, 1024), QSize(800, 600), QSize(640, 480)}) {
                surface.resize(size);
                std::set<std::string> names;
                const auto pieces = piecesOf(surface);
                for (const auto& [name, place] : pieces) {
                    EXPECT_TRUE(surface.rect().contains(place)) << name << " " << size.width();
                    for (const auto& [other, otherPlace] : pieces) {
                        EXPECT_TRUE(name == other || !place.intersects(otherPlace))
                            << name << " and " << other << " at " << size.width() << "x"
                            << size.height();
                    }
                    names.insert(name);
                }
                EXPECT_TRUE(size.height() < 768 || names.count("figure") == 1) << size.width();
            }
        }
    }
}

TEST(GuideLayout, TheInstructionGivesWayBeforeTheFigureAndTheFigureBeforeTheWords) {
    const OverlayLook look = OverlayLook::of(OverlayTint::ink, {1920, 1080});
    const GuideLayout::Words words{QString::fromStdString(kWordy.title),
                                   QString::fromStdString(kWordy.instruction)};
    const GuideLayout full = GuideLayout::in({920, 216}, look, words);
    const int fullType = full.instruction.font.pixelSize();
    EXPECT_EQ(full.figure.height(), 216);
    int lastFigure = full.figure.height();
    int lastType = fullType;
    for (int height = 216; height >= 0; height -= 4) {
        const GuideLayout layout = GuideLayout::in({920, height}, look, words);
        const int type = layout.instruction.font.pixelSize();
        EXPECT_LE(layout.size.height(), height);
        EXPECT_LE(layout.figure.height(), lastFigure) << height;
        if (layout.size.isEmpty()) {
            EXPECT_LT(height, 120) << "even the words alone find room there";
            break;
        }
        EXPECT_LE(type, lastType) << height;
        EXPECT_TRUE(layout.figure.height() == 216 || type < fullType) << height;
        EXPECT_EQ(GuideLayout::in(layout.size, look, words).figure, layout.figure) << height;
        lastFigure = layout.figure.height();
        lastType = type;
    }
    EXPECT_LT(lastFigure, 216);
    const GuideLayout tall = GuideLayout::in({920, 600}, look, words);
    EXPECT_GT(tall.figure.height(), 216);
    EXPECT_GT(tall.title.place.top(), tall.figure.bottom());
}

}  // namespace ostrel
