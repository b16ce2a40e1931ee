#include "screens/guide_figure.h"

#include <algorithm>
#include <vector>

#include "overlay/guided_moves.h"
#include "screens/gui.h"

namespace ostrel {

constexpr int kSheet = 120;
constexpr int kPhases = 48;

struct NamedFigure {
    std::string id;
    const GuideFigure* figure = nullptr;
};
std::vector<NamedFigure> allFigures() {
    std::vector<NamedFigure> found;
    for (const auto kind : {BreakLogEntry::Kind::eye, BreakLogEntry::Kind::body}) {
        for (const GuidedMove& move : GuidedMoveCatalog::moves(kind)) {
            found.push_back({std::string(move.id), GuideFigure::of(move.id)});
        }
    }
    return found;
}

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

TEST(GuideFigures, EveryMoveHasOneThatStaysOnItsSheetAtEveryPhase) {
    for (const auto& [id, figure] : allFigures()) {
        ASSERT_NE(figure, nullptr) << id;
        EXPECT_EQ(figure->id, id);
        for (int i = 0; i < kPhases; ++i) {
            const Ink ink = inkOf(drawn(figure->draw(static_cast<double>(i) / kPhases)));
            EXPECT_GT(ink.everywhere, 0.02) << id << " " << i;
            EXPECT_LT(ink.strongestAtEdge, 8) << id << " " << i;
        }
    }
    EXPECT_EQ(GuideFigure::of("no_such_move"), nullptr);
}

TEST(GuideFigures, EachMovesAndGoesOnWithoutAJumpWhereItBeginsAgain) {
    for (const auto& [id, figure] : allFigures()) {
        ASSERT_NE(figure, nullptr) << id;
        const QImage first = drawn(figure->at(0));
        double most = 0;
        for (int i = 1; i < kPhases; ++i) {
            const double seconds = figure->periodSec * i / kPhases;
            most = std::max(most, difference(first, drawn(figure->at(seconds))));
        }
        EXPECT_GT(most, 0.02) << id;
        const double almostOver = figure->periodSec * 0.9995;
        EXPECT_LT(difference(first, drawn(figure->at(almostOver))), 0.012) << id;
        EXPECT_EQ(figure->at(0), figure->at(3 * figure->periodSec)) << id;
    }
}

TEST(GuideFigures, NoTwoAreAlikeNotEvenWhenTheyStandStill) {
    const auto figures = allFigures();
    for (std::size_t i = 0; i < figures.size(); ++i) {
        for (std::size_t j = 0; j < i; ++j) {
            EXPECT_GT(
                difference(drawn(figures[i].figure->still()), drawn(figures[j].figure->still())),
                0.1)
                << figures[i].id << " " << figures[j].id;
        }
    }
}

}  // namespace ostrel
