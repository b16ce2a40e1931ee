#include "screens/linux/x11_window_system.h"

#include <QScreen>
#include <QWidget>
#include <QWindow>

#include "screens/linux/x11_picture.h"
#include "screens/linux/x11_selections.h"

namespace ostrel {

bool X11WindowSystem::canBeTranslucent() const {
    return X11Selections::hasCompositor();
}

// A display's origin is in the server's pixels at every scale, its size is not.
QPixmap X11WindowSystem::pictureOf(QScreen& screen, const QRect& frame) const {
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

Qt::WindowFlags X11WindowSystem::coverFlags() const {
    return X11Selections::isX11() ? Qt::X11BypassWindowManagerHint : Qt::WindowFlags();
}

Qt::WindowFlags X11WindowSystem::cardFlags() const {
    return Qt::X11BypassWindowManagerHint;
}

void X11WindowSystem::showCover(QWidget& window) {
    if (X11Selections::isX11()) {
        window.show();
    } else {
        window.showFullScreen();
    }
}

void X11WindowSystem::showCard(QWidget& window) {
    window.show();
}

// Elsewhere than on X11 a window gets the keyboard by being active.
bool X11WindowSystem::setKeyboardTaken(QWidget& window, bool isTaken) {
    if (!X11Selections::isX11()) {
        if (isTaken) {
            window.activateWindow();
        }
        return true;
    }
    QWindow* native = window.windowHandle();
    return native && native->setKeyboardGrabEnabled(isTaken);
}

}  // namespace ostrel
