#include "screens/welcome/step_dots.h"

#include <QApplication>
#include <QPainter>

#include "screens/colours.h"
#include "screens/controls/window_look.h"
#include "screens/texts/texts.h"

namespace ostrel {
namespace {

constexpr int kDot = 8;
constexpr int kGap = 10;

}  // namespace

StepDots::StepDots(int count, QWidget* parent) : QLabel(parent), count_(count) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setStep(0);
}

void StepDots::setStep(int step) {
    step_ = step;
    setAccessibleName(Texts::of("welcome.step %lld %lld", {step + 1, count_}));
    setToolTip(accessibleName());
    update();
}

QSize StepDots::sizeHint() const {
    return {count_ * kDot + (count_ - 1) * kGap, kDot};
}

void StepDots::paintEvent(QPaintEvent* /*event*/) {
    const QPalette colours = QApplication::palette();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    for (int i = 0; i < count_; ++i) {
        const int place = isRightToLeft() ? count_ - 1 - i : i;
        painter.setBrush(
            i == step_
                ? WindowLook::accent(colours)
                : Colours::between(colours.color(QPalette::Active, QPalette::Base),
                                   colours.color(QPalette::Active, QPalette::WindowText), 0.28));
        painter.drawEllipse(QRect(place * (kDot + kGap), 0, kDot, kDot));
    }
}

}  // namespace ostrel
