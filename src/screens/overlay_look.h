#pragma once

#include <QColor>
#include <QFont>
#include <QSize>

#include "core/settings/settings_model.h"

namespace ostrel {

// How an overlay looks: its colours and the sizes of its type, shared by everything on one display.
struct OverlayLook {
    QColor tint;  // over the desktop
    QColor text;
    QColor quiet;   // text that is secondary
    QColor accent;  // the one colour

    // One hundredth of the type and spacing of a display whose shorter side is 1080.
    double unit = 1.0;
    // Of everything but the tint: 0 invisible to 1.
    double opacity = 1.0;

    // Sizes follow the display, within the limits of what can be read on a small one.
    [[nodiscard]] static OverlayLook of(OverlayTint tint, QSize display);

    [[nodiscard]] int px(double size) const;
    [[nodiscard]] QFont font(double size, QFont::Weight weight = QFont::Normal) const;
};

}  // namespace ostrel
