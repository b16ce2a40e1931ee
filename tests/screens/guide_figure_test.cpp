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

// The share of the ink that is elsewhere.
double difference(const QImage& one, const QImage& other) {
    double sum = 0;
    for (int y = 0; y < kSheet; ++y) {
        for (int x = 0; x < kSheet; ++x) {
            sum += std::abs(qAlpha(one.pixel(x, y)) - qAlpha(other.pixel(x, y)));
        }
    }
    return sum / 255.0 / (kSheet * kSheet) / inkOf(one).everywhere;
}

TEST(GuideFigures, EveryMoveHasOneThatMovesOnItsSheetAndBeginsAgainWithoutAJump) {
    for (const auto kind : {BreakLogEntry::Kind::eye, BreakLogEntry::Kind::body}) {
        for (const GuidedMove& move : GuidedMoveCatalog::moves(kind)) {
            const GuideFigure* figure = GuideFigure::of(move.id);
            ASSERT_NE(figure, nullptr) << move.id;
            const QImage first = drawn(figure->at(0));
            double most = 0;
            for (int i = 0; i < kPhases; ++i) {
                const QImage picture = drawn(figure->at(figure->periodSec * i / kPhases));
                const Ink ink = inkOf(picture);
                EXPECT_GT(ink.everywhere, 0.02) << move.id << " " << i;
                EXPECT_LT(ink.strongestAtEdge, 8) << move.id << " " << i;
                most = std::max(most, difference(first, picture));
            }
            EXPECT_GT(most, 0.02) << move.id;
            const double almostOver = figure->periodSec * 0.9995;
            EXPECT_LT(difference(first, drawn(figure->at(almostOver))), 0.012) << move.id;
        }
    }
}

}  // namespace ostrel
