#include "screens/linux/x11_selections.h"

#include <xcb/xcb.h>

#include <QGuiApplication>
#include <cstdlib>
#include <memory>

namespace ostrel::X11Selections {
namespace {

struct Free {
    void operator()(void* reply) const { std::free(reply); }
};
template <class T>
using Reply = std::unique_ptr<T, Free>;

xcb_connection_t* connection() {
    const auto* x11 = qApp ? qApp->nativeInterface<QNativeInterface::QX11Application>() : nullptr;
    return x11 ? x11->connection() : nullptr;
}

int screenNumber() {
    char* host = nullptr;
    int display = 0;
    int screen = 0;
    const bool isParsed = xcb_parse_display(nullptr, &host, &display, &screen) != 0;
    const std::unique_ptr<char, Free> freed(host);
    return isParsed ? screen : 0;
}

xcb_atom_t atom(const QByteArray& name) {
    xcb_connection_t* x = connection();
    const auto cookie = xcb_intern_atom(x, 0, static_cast<std::uint16_t>(name.size()), name.data());
    const Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(x, cookie, nullptr));
    return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
}

bool hasOwner(const char* prefix) {
    xcb_connection_t* x = connection();
    if (!x) {
        return false;
    }
    const auto cookie =
        xcb_get_selection_owner(x, atom(prefix + QByteArray::number(screenNumber())));
    const Reply<xcb_get_selection_owner_reply_t> reply(
        xcb_get_selection_owner_reply(x, cookie, nullptr));
    return reply && reply->owner != XCB_WINDOW_NONE;
}

}  // namespace

bool isX11() {
    return QGuiApplication::platformName() == QLatin1String("xcb");
}

bool hasCompositor() {
    return QGuiApplication::platformName().startsWith(QLatin1String("wayland")) ||
           hasOwner("_NET_WM_CM_S");
}

bool hasTray() {
    return hasOwner("_NET_SYSTEM_TRAY_S");
}

void watchManagers() {
    xcb_connection_t* x = connection();
    if (!x) {
        return;
    }
    for (auto screens = xcb_setup_roots_iterator(xcb_get_setup(x)); screens.rem > 0;
         xcb_screen_next(&screens)) {
        const xcb_window_t root = screens.data->root;
        const Reply<xcb_get_window_attributes_reply_t> before(
            xcb_get_window_attributes_reply(x, xcb_get_window_attributes(x, root), nullptr));
        if (before) {
            // The toolkit selects events on the root, too, over the same connection.
            const std::uint32_t mask = before->your_event_mask | XCB_EVENT_MASK_STRUCTURE_NOTIFY;
            xcb_change_window_attributes(x, root, XCB_CW_EVENT_MASK, &mask);
        }
    }
    xcb_flush(x);
}

bool isManagerMessage(const QByteArray& eventType, const void* event) {
    constexpr std::uint8_t kSentBit = 0x80;
    if (eventType != "xcb_generic_event_t") {
        return false;
    }
    const auto* message = static_cast<const xcb_client_message_event_t*>(event);
    static const xcb_atom_t kManager = atom("MANAGER");
    return (message->response_type & ~kSentBit) == XCB_CLIENT_MESSAGE && message->type == kManager;
}

}  // namespace ostrel::X11Selections
