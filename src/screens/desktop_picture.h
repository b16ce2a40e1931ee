#pragma once

#include <QPixmap>
#include <QRect>

class QScreen;

namespace ostrel {

// What is on the display at `frame` now, in the desktop's logical pixels; null where that cannot be
// had.
[[nodiscard]] QPixmap desktopPicture(QScreen& screen, const QRect& frame);

}  // namespace ostrel
