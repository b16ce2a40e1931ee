#include "platform/linux/x11_frontmost_application.h"

#include <xcb/xcb.h>

#include <QGuiApplication>

#include "platform/linux/application_identifier.h"
#include "platform/linux/qt_x11.h"

namespace ostrel {

X11FrontmostApplication::X11FrontmostApplication() {
    xcb_connection_t* connection = qtX11Connection();
    if (connection == nullptr) {
        return;
    }
    root_ = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
    // The mask is the whole connection's: the toolkit's own wishes have to stay in it.
    const XcbReply<xcb_get_window_attributes_reply_t> attributes(xcb_get_window_attributes_reply(
        connection, xcb_get_window_attributes(connection, root_), nullptr));
    const std::uint32_t mask =
        (attributes ? attributes->your_event_mask : 0) | XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(connection, root_, XCB_CW_EVENT_MASK, &mask);
    qGuiApp->installNativeEventFilter(this);
}

X11FrontmostApplication::~X11FrontmostApplication() {
    if (qGuiApp != nullptr) {
        qGuiApp->removeNativeEventFilter(this);
    }
}

// Whatever the window manager tells: it also says which windows there are.
bool X11FrontmostApplication::nativeEventFilter(const QByteArray& /*eventType*/, void* message,
                                                qintptr* /*result*/) {
    constexpr int kSentByProgram = 0x80;
    const auto* event = static_cast<const xcb_generic_event_t*>(message);
    if (root_ != 0 && (event->response_type & ~kSentByProgram) == XCB_PROPERTY_NOTIFY &&
        reinterpret_cast<const xcb_property_notify_event_t*>(event)->window == root_) {
        known_.reset();
    }
    return false;
}

std::optional<FrontmostApplication::Application> X11FrontmostApplication::current() const {
    if (!known_) {
        known_ = ask();
    }
    return *known_;
}

std::optional<FrontmostApplication::Application> X11FrontmostApplication::ask() const {
    const auto window = windows_.active();
    if (!window) {
        return std::nullopt;
    }
    const auto process = windows_.processOf(*window);
    return Application{applicationIdentifier(processes_, process, windows_.namesOf(*window)),
                       process.value_or(0)};
}

}  // namespace ostrel
