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
// Drawn once and copied from then on. Without a picture of the desktop the desktop itself shines
// through, which takes a compositor.
class OverlayBackdrop {
  public:
    // `dimOpacity` is taken as 0 to 1.
    void prepare(QSize size, double devicePixelRatio, const OverlayLook& look, double dimOpacity);

    // A null picture means none.
    void setPicture(const QPixmap& picture) { picture_ = picture; }

    void paint(QPainter& painter, const QRect& area) const;

    // The desktop alone, as before the break.
    void paintDesktop(QPainter& painter, const QRect& area) const;

  private:
    QPixmap picture_;
    QPixmap tinted_;
};

}  // namespace ostrel
