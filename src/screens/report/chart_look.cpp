#include "screens/report/chart_look.h"

#include <QPainter>
#include <QPalette>
#include <algorithm>

#include "screens/colours.h"
#include "screens/controls/window_look.h"

namespace ostrel::ChartLook {
namespace {

constexpr double kOutline = 1.2;
constexpr double kCorner = 3;

}  // namespace

void paintPart(QPainter& painter, const QRectF& box, Part part, const QPalette& palette) {
    const QColor paper = palette.color(QPalette::Active, QPalette::Base);
    const QColor ink = palette.color(QPalette::Active, QPalette::WindowText);
    const QColor accent = WindowLook::accent(palette);
    const double corner = std::min({kCorner, box.width() / 2, box.height() / 2});
    painter.setRenderHint(QPainter::Antialiasing);
    if (part == Part::eye) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(accent);
        painter.drawRoundedRect(box, corner, corner);
        return;
    }
    const bool isBody = part == Part::body;
    painter.setPen(QPen(isBody ? accent : Colours::between(paper, ink, 0.5), kOutline));
    painter.setBrush(isBody ? QBrush(Colours::between(paper, accent, 0.4)) : QBrush(Qt::NoBrush));
    const double half = std::min(kOutline / 2, box.height() / 2);
    painter.drawRoundedRect(box.adjusted(half, half, -half, -half), corner, corner);
}

void paintGoalLine(QPainter& painter, double left, double right, double y,
                   const QPalette& palette) {
    painter.setRenderHint(QPainter::Antialiasing, false);
    const QColor colour =
        Colours::between(palette.color(QPalette::Active, QPalette::Base),
                         palette.color(QPalette::Active, QPalette::WindowText), 0.7);
    painter.setPen(QPen(colour, 1));
    painter.drawLine(QPointF(left, y), QPointF(right, y));
}

}  // namespace ostrel::ChartLook
