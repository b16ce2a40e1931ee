#include "platform/linux/display_probe.h"

#include <xcb/xcb.h>

#include <QtGlobal>
#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace ostrel {
namespace {

bool hasWaylandSocket() {
    const char* name = std::getenv("WAYLAND_DISPLAY");
    const char* folder = std::getenv("XDG_RUNTIME_DIR");
    if (name == nullptr) {
        return false;
    }
    const std::filesystem::path socket(name);
    std::error_code ignored;
    return std::filesystem::exists(
        socket.is_absolute() || folder == nullptr ? socket : folder / socket, ignored);
}

bool hasXServer() {
    xcb_connection_t* connection = xcb_connect(nullptr, nullptr);
    const bool isThere = xcb_connection_has_error(connection) == 0;
    xcb_disconnect(connection);
    return isThere;
}

}  // namespace

bool isDisplayReachable() {
    return qEnvironmentVariableIsSet("QT_QPA_PLATFORM") || hasWaylandSocket() || hasXServer();
}

}  // namespace ostrel
