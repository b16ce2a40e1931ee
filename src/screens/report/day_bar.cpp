#include "screens/report/day_bar.h"

#include <QApplication>
#include <QPainter>
#include <algorithm>
#include <cmath>
#include <utility>

#include "screens/controls/window_look.h"
#include "screens/report/chart_look.h"

namespace ostrel {
namespace {

constexpr double kShare = 0.58;  // of the width of a day
constexpr double kWidest = 34;
constexpr double kGap = 2;  // between the parts of a stack
constexpr double kCorner = 4;

QRectF centred(const QRectF& slot) {
    const double width = std::min(kWidest, slot.width() * kShare);
    return {slot.center().x() - width / 2, slot.top(), width, slot.height()};
}

}  // namespace

DayBar::DayBar(QWidget* chart) : QWidget(chart) {
    setAttribute(Qt::WA_Hover);
    setFocusPolicy(Qt::ClickFocus);
}

void DayBar::show(const ReportDay& day, const Scale& scale, const QString& words) {
    day_ = day;
    scale_ = scale;
    setAccessibleName(words);
    update();
}

void DayBar::setChoice(Choice choice) {
    choice_ = choice;
    setFocusPolicy(choice == Choice::chosen ? Qt::StrongFocus : Qt::ClickFocus);
    update();
}

double DayBar::heightOf(std::int64_t count, const Scale& scale, double plotHeight) {
    return plotHeight * static_cast<double>(count) / static_cast<double>(scale.top);
}

void DayBar::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    paintGround(painter);
    paintStack(painter);
    const double y = std::round(height() - heightOf(scale_.goal, scale_, height()));
    ChartLook::paintGoalLine(painter, 0, width(), std::max(y, 0.0), QApplication::palette());
}

void DayBar::paintGround(QPainter& painter) const {
    const QPalette colours = QApplication::palette();
    QColor ground = colours.color(QPalette::Active, QPalette::WindowText);
    ground.setAlphaF(choice_ == Choice::chosen ? 0.08F : underMouse() ? 0.05F : 0.0F);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(ground);
    painter.setPen(hasFocus() ? QPen(WindowLook::accent(colours), 2) : QPen(Qt::NoPen));
    const double inset = hasFocus() ? 1 : 0;
    painter.drawRoundedRect(QRectF(rect()).adjusted(inset, inset, -inset, -inset), kCorner,
                            kCorner);
}

void DayBar::paintStack(QPainter& painter) const {
    using ChartLook::Part;
    const std::pair<std::int64_t, Part> parts[] = {
        {day_.eye, Part::eye}, {day_.body, Part::body}, {day_.faded, Part::faded}};
    const QRectF column = centred(rect());
    double foot = column.bottom();
    for (const auto& [count, part] : parts) {
        if (count > 0) {
            const double tall = heightOf(count, scale_, height());
            const double gap = std::min(kGap, tall / 2);
            ChartLook::paintPart(painter,
                                 QRectF(column.left(), foot - tall, column.width(), tall - gap),
                                 part, QApplication::palette());
            foot -= tall;
        }
    }
}

}  // namespace ostrel
