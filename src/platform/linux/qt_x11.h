#pragma once

#include <cstdlib>
#include <memory>

struct xcb_connection_t;

namespace ostrel {

// Qt's connection to the X server; null where it has none, or none that works.
[[nodiscard]] xcb_connection_t* qtX11Connection();

// Whether that server is only a guest in a Wayland session: then it sees nothing of the input and
// the windows of the other programs.
[[nodiscard]] bool isXInsideWayland(xcb_connection_t* connection);

struct FreeXcbReply {
    void operator()(void* reply) const { std::free(reply); }
};
template <class Reply>
using XcbReply = std::unique_ptr<Reply, FreeXcbReply>;

}  // namespace ostrel
