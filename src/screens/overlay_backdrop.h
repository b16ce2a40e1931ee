#pragma once

#include <QPixmap>
#include <QSize>

#include "screens/overlay_look.h"

class QPainter;
class QRect;

namespace ostrel {

// What lies behind the content: the tint over the desktop, darker around the middle so that the
// content can be read over a white desktop too.
//
// Without a picture of the desktop the desktop itself shines through, which takes a compositor.
class OverlayBackdrop {
  public:
    // A null picture means none.
    void setPicture(const QPixmap& picture) { picture_ = picture; }

    // `dimOpacity` is taken as 0 to 1.
    void setTint(const QColor& tint, double dimOpacity);

    // Replaces what is in `area` of a surface of this size.
    void paint(QPainter& painter, const QRect& area, QSize surface) const;

    // The desktop alone, as before the break.
    void paintDesktop(QPainter& painter, const QRect& area) const;

  private:
    void paintShade(QPainter& painter, const QRect& area, QSize surface) const;

    QPixmap picture_;
    QColor tint_;
    double dimOpacity_ = 1.0;
};

}  // namespace ostrel
