#include "screens/guide_view.h"

#include <set>

#include "overlay/guided_moves.h"
#include "screens/guide_figure.h"
#include "screens/overlay_text.h"
#include "screens/overlay_view.h"
#include "screens/surface_bench.h"

namespace ostrel {

// Keys without a text stand for themselves: these words are 40 % longer than the longest of ours.
const GuidedMove kWordy{
    "quad_stretch", "", "Dehnung der Oberschenkelvorderseite",
    "Halten Sie sich an einem festen Gegenstand fest, umfassen Sie einen Fuß und ziehen Sie die "
    "Ferse behutsam in Richtung Gesäß, die Knie bleiben dabei nebeneinander. Eine halbe Minute "
    "lang auf jeder Seite, ohne Schmerz."};

struct GuideViewTest : SurfaceTest {
    static GuideView* guideOf(const OverlaySurface& surface) {
        return static_cast<GuideView*>(
            surface.findChild<QWidget*>(QStringLiteral("ostrel.overlay.guide")));
    }
};

TEST_F(GuideViewTest, ItMovesOnlyWhileSomebodyMaySeeItAndWants) {
    bench.motion().setReduceMotion(false);
    OverlaySurface& surface = present(BreakKind::body, 60);
    const GuideView* guide = guideOf(surface);
    EXPECT_TRUE(guide->isMoving());
    surface.setRole(Role::secondary);
    EXPECT_FALSE(guide->isMoving() || guide->isVisible());
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

TEST(GuideFigures, EveryMoveHasOneThatKeepsOffTheEdgesOfItsSheet) {
    constexpr int kSide = 120;
    for (const auto kind : {BreakKind::eye, BreakKind::body}) {
        for (const GuidedMove& move : GuidedMoveCatalog::moves(kind)) {
            const GuideFigure* figure = GuideFigure::of(move.id);
            ASSERT_NE(figure, nullptr) << move.id;
            for (double phase = 0; phase < 1; phase += 0.02) {
                QImage sheet(kSide, kSide, QImage::Format_ARGB32_Premultiplied);
                figure->draw(phase).paint(sheet, Qt::white);
                for (int i = 0; i < kSide; ++i) {
                    ASSERT_LT(qAlpha(sheet.pixel(i, 0) | sheet.pixel(i, kSide - 1) |
                                     sheet.pixel(0, i) | sheet.pixel(kSide - 1, i)),
                              8)
                        << move.id << " " << phase;
                }
            }
        }
    }
}

}  // namespace ostrel
