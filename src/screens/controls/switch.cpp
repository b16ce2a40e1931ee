#include "screens/controls/switch.h"

#include <QApplication>
#include <QPainter>

#include "screens/colours.h"
#include "screens/controls/window_look.h"

namespace ostrel {
namespace {

constexpr int kWidth = 40;
constexpr int kHeight = 22;
constexpr int kRing = 3;  // for the focus, around it

}  // namespace

Switch::Switch(QWidget* parent) : QCheckBox(parent) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setCursor(Qt::PointingHandCursor);
}

QSize Switch::sizeHint() const {
    return {kWidth + 2 * kRing, kHeight + 2 * kRing};
}

bool Switch::hitButton(const QPoint& position) const {
    return rect().contains(position);
}

void Switch::paintEvent(QPaintEvent* /*event*/) {
    const QPalette colours = QApplication::palette();
    const QColor paper = colours.color(QPalette::Active, QPalette::Base);
    const QColor ink = colours.color(QPalette::Active, QPalette::WindowText);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setOpacity(isEnabled() ? 1.0 : 0.45);
    const QRectF track = QRectF(rect()).adjusted(kRing, kRing, -kRing, -kRing);
    if (hasFocus()) {
        painter.setPen(QPen(WindowLook::accent(colours), 2));
        painter.drawRoundedRect(track.adjusted(-2, -2, 2, 2), kHeight / 2.0 + 2, kHeight / 2.0 + 2);
    }
    painter.setPen(Qt::NoPen);
    painter.setBrush(isChecked() ? WindowLook::accent(colours)
                                 : Colours::between(paper, ink, 0.28));
    painter.drawRoundedRect(track, kHeight / 2.0, kHeight / 2.0);
    const bool isAtRight = isChecked() != isRightToLeft();
    const double knob = kHeight - 6.0;
    const double left = isAtRight ? track.right() - knob - 3 : track.left() + 3;
    painter.setBrush(Qt::white);
    painter.drawEllipse(QRectF(left, track.top() + 3, knob, knob));
}

}  // namespace ostrel
