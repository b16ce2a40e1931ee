#pragma once

#include <cstdlib>
#include <memory>

struct xcb_connection_t;

namespace ostrel {

// Qt's connection to the X server; null where it has none, or none that works.
[[nodiscard]] xcb_connection_t* qtX11Connection();

struct FreeXcbReply {
    void operator()(void* reply) const { std::free(reply); }
};
template <class Reply>
using XcbReply = std::unique_ptr<Reply, FreeXcbReply>;

}  // namespace ostrel
