#include "platform/linux/x11_active_window.h"

#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>
#include <string_view>

namespace ostrel {
namespace {

struct Free {
    void operator()(void* reply) const { std::free(reply); }
};
template <class Reply>
using Owned = std::unique_ptr<Reply, Free>;

xcb_atom_t existingAtom(xcb_connection_t* connection, std::string_view name) {
    const auto cookie =
        xcb_intern_atom(connection, 1, static_cast<std::uint16_t>(name.size()), name.data());
    const Owned<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(connection, cookie, nullptr));
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

xcb_window_t activeWindow(xcb_connection_t* connection, xcb_window_t root) {
    const xcb_atom_t property = existingAtom(connection, "_NET_ACTIVE_WINDOW");
    if (property == XCB_ATOM_NONE) {
        return XCB_WINDOW_NONE;
    }
    const auto cookie = xcb_get_property(connection, 0, root, property, XCB_ATOM_WINDOW, 0, 1);
    const Owned<xcb_get_property_reply_t> reply(
        xcb_get_property_reply(connection, cookie, nullptr));
    if (!reply || reply->format != 32 || reply->value_len != 1) {
        return XCB_WINDOW_NONE;
    }
    return *static_cast<const xcb_window_t*>(xcb_get_property_value(reply.get()));
}

}  // namespace

std::optional<QRect> x11ActiveWindowFrame(xcb_connection_t* connection) {
    if (connection == nullptr || xcb_connection_has_error(connection) != 0) {
        return std::nullopt;
    }
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
    const xcb_window_t window = activeWindow(connection, root);
    if (window == XCB_WINDOW_NONE) {
        return std::nullopt;
    }
    const auto sizeCookie = xcb_get_geometry(connection, window);
    const auto placeCookie = xcb_translate_coordinates(connection, window, root, 0, 0);
    const Owned<xcb_get_geometry_reply_t> size(
        xcb_get_geometry_reply(connection, sizeCookie, nullptr));
    const Owned<xcb_translate_coordinates_reply_t> place(
        xcb_translate_coordinates_reply(connection, placeCookie, nullptr));
    if (!size || !place) {
        return std::nullopt;  // it was closed in between
    }
    return QRect(place->dst_x, place->dst_y, size->width, size->height);
}

}  // namespace ostrel
