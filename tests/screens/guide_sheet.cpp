// guide_sheet FILE.png [ID...]: all figures of the guided moves, or these, each at several phases,
// in one picture.

#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

#include "overlay/guided_moves.h"
#include "screens/guide_figure.h"
#include "screens/overlay_look.h"

namespace ostrel {
namespace {

constexpr int kPhases = 6;
constexpr int kMargin = 12;

QImage sheetOf(const std::vector<const GuideFigure*>& figures, int side) {
    const OverlayLook look = OverlayLook::of(OverlayTint::ink, {1920, 1080});
    const int cell = side + 2 * kMargin;
    QImage picture(cell * (kPhases + 1), cell * static_cast<int>(figures.size()),
                   QImage::Format_RGB32);
    picture.fill(look.tint);
    QPainter painter(&picture);
    painter.setPen(look.quiet);
    QImage sheet(side, side, QImage::Format_ARGB32_Premultiplied);
    int y = kMargin;
    for (const GuideFigure* figure : figures) {
        for (int i = 0; i <= kPhases; ++i) {
            const int x = i * cell + kMargin;
            const double phase = static_cast<double>(i - 1) / kPhases;
            (i == 0 ? figure->still() : figure->draw(phase)).paint(sheet, look.accent);
            painter.drawImage(x, y, sheet);
            painter.drawText(x, y + 10,
                             i == 0 ? QString::fromUtf8(figure->id.data(),
                                                        static_cast<qsizetype>(figure->id.size()))
                                    : QString::number(phase, 'g', 2));
        }
        y += cell;
    }
    return picture;
}

int run(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    if (arguments.empty()) {
        std::fputs("usage: guide_sheet FILE.png [ID...]\n", stderr);
        return 2;
    }
    std::vector<const GuideFigure*> figures;
    for (const auto kind : {BreakLogEntry::Kind::body, BreakLogEntry::Kind::eye}) {
        for (const GuidedMove& move : GuidedMoveCatalog::moves(kind)) {
            const bool isAsked =
                arguments.size() == 1 ||
                std::find(arguments.begin() + 1, arguments.end(), move.id) != arguments.end();
            if (const GuideFigure* figure = isAsked ? GuideFigure::of(move.id) : nullptr) {
                figures.push_back(figure);
            }
        }
    }
    constexpr int kSide = 260;
    return sheetOf(figures, kSide).save(QString::fromStdString(arguments[0])) ? 0 : 1;
}

}  // namespace
}  // namespace ostrel

int main(int argc, char** argv) {
    return ostrel::run(argc, argv);
}
