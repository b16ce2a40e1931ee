#include "screens/desktop_picture.h"

#include <QScreen>

#include "screens/x11_picture.h"

namespace ostrel {

// A display's origin is in the server's pixels at every scale, its size is not.
QPixmap desktopPicture(QScreen& screen, const QRect& frame) {
    if (frame == screen.geometry()) {
        const double scale = screen.devicePixelRatio();
        QPixmap picture = x11Picture({frame.topLeft(), (QSizeF(frame.size()) * scale).toSize()});
        if (!picture.isNull()) {
            picture.setDevicePixelRatio(scale);
            return picture;
        }
    }
    const QRect within = frame.translated(-screen.geometry().topLeft());
    return screen.grabWindow(0, within.x(), within.y(), within.width(), within.height());
}

}  // namespace ostrel
