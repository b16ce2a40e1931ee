#pragma once

#include <QPixmap>
#include <QRect>

namespace ostrel {

// What the X server shows in a rectangle of its own pixels, taken through shared memory: some
// milliseconds for a display, where Qt's way through the socket takes tens. Null without X11, on a
// server elsewhere, and where pixels are not the common 32 bits.
[[nodiscard]] QPixmap x11Picture(const QRect& nativeArea);

}  // namespace ostrel
