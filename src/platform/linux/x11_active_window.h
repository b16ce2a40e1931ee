#pragma once

#include <QRect>
#include <optional>

struct xcb_connection_t;

namespace ostrel {

// Where the window with the user's attention (EWMH _NET_ACTIVE_WINDOW) lies on the X screen, in
// device pixels. Absent without a window manager that tells, and while no window is active.
[[nodiscard]] std::optional<QRect> x11ActiveWindowFrame(xcb_connection_t* connection);

}  // namespace ostrel
