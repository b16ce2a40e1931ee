#include <QImage>
#include <QPainter>
#include <cmath>

#include "screens/gui.h"
#include "screens/overlay_backdrop.h"

namespace ostrel {

// WCAG 2.1, relative luminance and contrast ratio.
double luminance(const QColor& colour) {
    const auto linear = [](double c) {
        return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
           0.0722 * linear(colour.blueF());
}
double contrast(const QColor& a, const QColor& b) {
    const double one = luminance(a) + 0.05;
    const double other = luminance(b) + 0.05;
    return one > other ? one / other : other / one;
}

TEST(OverlayLook, TextCanBeReadOverAWhiteDesktopHoweverWeakTheTint) {
    constexpr QSize kDisplay(960, 540);
    QPixmap white(kDisplay);
    white.fill(Qt::white);
    for (const auto tint :
         {OverlayTint::ink, OverlayTint::black, OverlayTint::navy, OverlayTint::sage}) {
        for (const double dim : {-1.0, 0.0, 0.3, 0.7, 1.0}) {
            const OverlayLook look = OverlayLook::of(tint, kDisplay);
            OverlayBackdrop backdrop;
            backdrop.setPicture(white);
            backdrop.setTint(look.tint, dim);
            QImage image(kDisplay, QImage::Format_RGB32);
            QPainter painter(&image);
            backdrop.paint(painter, image.rect(), kDisplay);
            painter.end();
            // The time, the title and the ring.
            for (const QPoint place : {QPoint(480, 270), QPoint(480, 100), QPoint(365, 270)}) {
                const QColor behind = image.pixelColor(place);
                EXPECT_GE(contrast(look.text, behind), 4.5) << nameOf(tint) << " " << dim;
                EXPECT_GE(contrast(look.accent, behind), 3.0) << nameOf(tint) << " " << dim;
            }
        }
    }
}

}  // namespace ostrel
