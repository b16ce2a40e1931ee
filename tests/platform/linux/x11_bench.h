#pragma once

#include <gtest/gtest.h>
#include <xcb/xcb.h>

#include <QProcess>
#include <cstdint>
#include <string_view>
#include <vector>

#include "platform/linux/qt_x11.h"

namespace ostrel {

inline QByteArray outputOf(const QString& program, const QStringList& arguments) {
    QProcess process;
    process.start(program, arguments);
    process.waitForFinished();
    return process.readAllStandardOutput();
}

inline xcb_window_t rootWindow() {
    return xcb_setup_roots_iterator(xcb_get_setup(qtX11Connection())).data->root;
}

inline xcb_atom_t atom(std::string_view name) {
    const auto length = static_cast<std::uint16_t>(name.size());
    const XcbReply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(
        qtX11Connection(), xcb_intern_atom(qtX11Connection(), 0, length, name.data()), nullptr));
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

inline void setProperty(xcb_window_t window, std::string_view property, xcb_atom_t type,
                        const std::vector<std::uint32_t>& values) {
    xcb_change_property(qtX11Connection(), XCB_PROP_MODE_REPLACE, window, atom(property), type, 32,
                        static_cast<std::uint32_t>(values.size()), values.data());
}

// Not yet on the screen.
inline xcb_window_t makeWindow(const xcb_rectangle_t& at) {
    const xcb_window_t window = xcb_generate_id(qtX11Connection());
    xcb_create_window(qtX11Connection(), XCB_COPY_FROM_PARENT, window, rootWindow(), at.x, at.y,
                      at.width, at.height, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                      0, nullptr);
    return window;
}

}  // namespace ostrel
