#include "screens/linux/tray_watch.h"

#include <QCoreApplication>
#include <utility>

#include "screens/linux/x11_selections.h"

namespace ostrel {

TrayWatch::TrayWatch(std::function<void()> onTray) : onTray_(std::move(onTray)) {
    if (X11Selections::isX11()) {
        X11Selections::watchManagers();
        QCoreApplication::instance()->installNativeEventFilter(this);
        look();
    }
}

TrayWatch::~TrayWatch() {
    if (auto* application = QCoreApplication::instance()) {
        application->removeNativeEventFilter(this);
    }
}

bool TrayWatch::isThere() {
    return X11Selections::isX11() && X11Selections::hasTray();
}

bool TrayWatch::nativeEventFilter(const QByteArray& eventType, void* message, qintptr*) {
    if (X11Selections::isManagerMessage(eventType, message)) {
        look();
    }
    return false;
}

// Not from inside the X11 event: to ask the X server is to wait for it.
void TrayWatch::look() {
    QMetaObject::invokeMethod(
        this,
        [this] {
            if (isThere()) {
                onTray_();
            }
        },
        Qt::QueuedConnection);
}

}  // namespace ostrel
