#include "platform/linux/x11_input_idle.h"

#include <xcb/screensaver.h>
#include <xcb/xcb.h>

#include "platform/linux/qt_x11.h"
#include "platform/linux/x11_input_watch.h"

namespace ostrel {

X11InputIdle::X11InputIdle() {
    xcb_connection_t* connection = qtX11Connection();
    if (connection == nullptr || isXInsideWayland(connection)) {
        return;
    }
    const xcb_query_extension_reply_t* extension =
        xcb_get_extension_data(connection, &xcb_screensaver_id);
    if (extension != nullptr && extension->present != 0) {
        root_ = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
    }
}

X11InputIdle::~X11InputIdle() = default;

std::optional<double> X11InputIdle::secondsSinceLastInput() const {
    xcb_connection_t* connection = root_ == 0 ? nullptr : qtX11Connection();
    if (connection == nullptr) {
        return std::nullopt;
    }
    if (!watch_) {
        watch_ = std::make_unique<X11InputWatch>();
    }
    if (const auto idle = watch_->sinceInput()) {
        return std::chrono::duration<double>(*idle).count();
    }
    const auto cookie = xcb_screensaver_query_info(connection, root_);
    const XcbReply<xcb_screensaver_query_info_reply_t> reply(
        xcb_screensaver_query_info_reply(connection, cookie, nullptr));
    return reply ? std::optional(reply->ms_since_user_input / 1000.0) : std::nullopt;
}

}  // namespace ostrel
