#pragma once

#include <QPixmap>
#include <QRect>
#include <QSize>
#include <span>
#include <vector>

#include "screens/overlay_look.h"

class QPainter;

namespace ostrel {

// What lies behind the content: the tint over the desktop, darker around the middle so that the
// content can be read over a white desktop too.
//
// Without a picture of the desktop the desktop itself shines through, which takes a compositor.
class OverlayBackdrop {
  public:
    // A null picture means none.
    void setPicture(const QPixmap& picture);

    // `dimOpacity` is taken as 0 to 1.
    void setTint(const QColor& tint, double dimOpacity);

    // These areas of a surface of this size are painted again and again: what is behind them is
    // worked out now and kept, in place of those before.
    void keep(std::span<const QRect> areas, QSize surface, double pixelRatio);

    // Replaces what is in `area` of a surface of this size.
    void paint(QPainter& painter, const QRect& area, QSize surface) const;

    // The desktop alone, as before the break.
    void paintDesktop(QPainter& painter, const QRect& area) const;

  private:
    struct Kept {
        QRect area;
        QPixmap picture;
    };

    void paintAnew(QPainter& painter, const QRect& area, QSize surface) const;
    void paintShade(QPainter& painter, const QRect& area, QSize surface) const;

    QPixmap picture_;
    QColor tint_;
    double dimOpacity_ = 1.0;
    QSize keptFor_;  // the surface
    std::vector<Kept> kept_;
};

}  // namespace ostrel
