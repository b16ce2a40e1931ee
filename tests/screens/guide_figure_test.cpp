#include "screens/guide_figure.h"

#include <algorithm>

#include "overlay/guided_moves.h"
#include "screens/gui.h"

namespace ostrel {

constexpr int kSheet = 120;
constexpr int kPhases = 48;

QImage drawn(const FigureScene& scene) {
    QImage sheet(kSheet, kSheet, QImage::Format_ARGB32_Premultiplied);
    scene.paint(sheet, Qt::white);
    return sheet;
}

struct Ink {
    double everywhere = 0;  // share of the sheet that is inked
    int strongestAtEdge = 0;
};
Ink inkOf(const QImage& sheet) {
    Ink ink;
    for (int y = 0; y < kSheet; ++y) {
        for (int x = 0; x < kSheet; ++x) {
            const int alpha = qAlpha(sheet.pixel(x, y));
            ink.everywhere += alpha / 255.0 / (kSheet * kSheet);
            if (x == 0 || y == 0 || x == kSheet - 1 || y == kSheet - 1) {
                ink.strongestAtEdge = std::max(ink.strongestAtEdge, alpha);
            }
        }
    }
    return ink;
}

TEST(GuideFigures, EveryMoveHasOneThatStaysOnItsSheetAtEveryPhase) {
    for (const auto kind : {BreakLogEntry::Kind::eye, BreakLogEntry::Kind::body}) {
        for (const GuidedMove& move : GuidedMoveCatalog::moves(kind)) {
            const GuideFigure* figure = GuideFigure::of(move.id);
            ASSERT_NE(figure, nullptr) << move.id;
            for (int i = 0; i < kPhases; ++i) {
                const Ink ink = inkOf(drawn(figure->draw(static_cast<double>(i) / kPhases)));
                EXPECT_GT(ink.everywhere, 0.02) << move.id << " " << i;
                EXPECT_LT(ink.strongestAtEdge, 8) << move.id << " " << i;
            }
        }
    }
}

}  // namespace ostrel
