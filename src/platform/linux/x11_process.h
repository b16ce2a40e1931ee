#pragma once

#include <xcb/res.h>

#include <cstdint>
#include <optional>

namespace ostrel {

// The process at the other end of the connection that a window, or anything else of the X server,
// was made by (X-Resource, which must be there). Absent for a program on another computer.
[[nodiscard]] std::optional<std::int64_t> x11ProcessOf(xcb_connection_t* connection,
                                                       std::uint32_t resource);

// The same in two steps, for many at once.
[[nodiscard]] xcb_res_query_client_ids_cookie_t askForX11Process(xcb_connection_t* connection,
                                                                 std::uint32_t resource);
[[nodiscard]] std::optional<std::int64_t> takeX11Process(xcb_connection_t* connection,
                                                         xcb_res_query_client_ids_cookie_t cookie);

}  // namespace ostrel
