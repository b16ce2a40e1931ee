#include "screens/overlay_look.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace ostrel {
namespace {

constexpr double kDesignedShortSide = 1080.0;
constexpr double kLeastUnit = 0.76;

struct TintColours {
    QRgb tint;
    QRgb accent;
};

TintColours coloursOf(OverlayTint tint) {
    switch (tint) {
        case OverlayTint::ink:
            break;
        case OverlayTint::black:
            return {qRgb(0, 0, 0), qRgb(231, 220, 196)};
        case OverlayTint::navy:
            return {qRgb(10, 22, 46), qRgb(127, 196, 224)};
        case OverlayTint::sage:
            return {qRgb(22, 36, 29), qRgb(168, 210, 170)};
    }
    return {qRgb(16, 19, 26), qRgb(146, 183, 235)};
}

}  // namespace

OverlayLook OverlayLook::of(OverlayTint tint, QSize display) {
    const auto [tintRgb, accentRgb] = coloursOf(tint);
    OverlayLook look;
    look.tint = QColor(tintRgb);
    look.accent = QColor(accentRgb);
    look.text = QColor(245, 246, 248);
    look.quiet = QColor(245, 246, 248, 178);
    look.unit =
        std::max(std::min(display.width(), display.height()) / kDesignedShortSide, kLeastUnit);
    return look;
}

int OverlayLook::px(double size) const {
    return std::max(1, static_cast<int>(std::lround(size * unit)));
}

QFont OverlayLook::font(double size, QFont::Weight weight) const {
    QFont font;
    font.setFamilies({QStringLiteral("Inter"), QStringLiteral("Cantarell"),
                      QStringLiteral("Noto Sans"), QStringLiteral("DejaVu Sans")});
    font.setPixelSize(px(size));
    font.setWeight(weight);
    return font;
}

}  // namespace ostrel
