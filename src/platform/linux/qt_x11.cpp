#include "platform/linux/qt_x11.h"

#include <xcb/xcb.h>

#include <QGuiApplication>

namespace ostrel {

xcb_connection_t* qtX11Connection() {
    const auto* x11 =
        qGuiApp ? qGuiApp->nativeInterface<QNativeInterface::QX11Application>() : nullptr;
    xcb_connection_t* connection = x11 == nullptr ? nullptr : x11->connection();
    const bool isUsable = connection != nullptr && xcb_connection_has_error(connection) == 0;
    return isUsable ? connection : nullptr;
}

}  // namespace ostrel
