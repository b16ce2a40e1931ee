#include "platform/linux/x11_input_idle.h"

#include <xcb/screensaver.h>
#include <xcb/xcb.h>

#include <QGuiApplication>
#include <cstdlib>
#include <memory>

namespace ostrel {
namespace {

xcb_connection_t* qtConnection() {
    const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    xcb_connection_t* connection = x11 == nullptr ? nullptr : x11->connection();
    const bool isUsable = connection != nullptr && xcb_connection_has_error(connection) == 0;
    return isUsable ? connection : nullptr;
}

}  // namespace

X11InputIdle::X11InputIdle() {
    xcb_connection_t* connection = qtConnection();
    if (connection == nullptr) {
        return;
    }
    const xcb_query_extension_reply_t* extension =
        xcb_get_extension_data(connection, &xcb_screensaver_id);
    if (extension != nullptr && extension->present != 0) {
        root_ = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
    }
}

std::optional<double> X11InputIdle::secondsSinceLastInput() const {
    xcb_connection_t* connection = root_ == 0 ? nullptr : qtConnection();
    if (connection == nullptr) {
        return std::nullopt;
    }
    const auto cookie = xcb_screensaver_query_info(connection, root_);
    const std::unique_ptr<xcb_screensaver_query_info_reply_t, decltype(&std::free)> reply(
        xcb_screensaver_query_info_reply(connection, cookie, nullptr), &std::free);
    return reply ? std::optional(reply->ms_since_user_input / 1000.0) : std::nullopt;
}

}  // namespace ostrel
