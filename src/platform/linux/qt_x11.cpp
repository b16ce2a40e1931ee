#include "platform/linux/qt_x11.h"

#include <xcb/xcb.h>

#include <QGuiApplication>
#include <string_view>

namespace ostrel {

xcb_connection_t* qtX11Connection() {
    const auto* x11 =
        qGuiApp ? qGuiApp->nativeInterface<QNativeInterface::QX11Application>() : nullptr;
    xcb_connection_t* connection = x11 == nullptr ? nullptr : x11->connection();
    const bool isUsable = connection != nullptr && xcb_connection_has_error(connection) == 0;
    return isUsable ? connection : nullptr;
}

// Before its release 23.1 such a server does not name itself.
bool isXInsideWayland(xcb_connection_t* connection) {
    if (qEnvironmentVariableIsSet("WAYLAND_DISPLAY") ||
        qEnvironmentVariable("XDG_SESSION_TYPE") == QLatin1String("wayland")) {
        return true;
    }
    constexpr std::string_view kExtension = "XWAYLAND";
    const XcbReply<xcb_query_extension_reply_t> reply(xcb_query_extension_reply(
        connection, xcb_query_extension(connection, kExtension.size(), kExtension.data()),
        nullptr));
    return reply && reply->present != 0;
}

}  // namespace ostrel
