#include "platform/linux/x11_process.h"

#include "platform/linux/qt_x11.h"

namespace ostrel {

std::optional<std::int64_t> x11ProcessOf(xcb_connection_t* connection, std::uint32_t resource) {
    return takeX11Process(connection, askForX11Process(connection, resource));
}

xcb_res_query_client_ids_cookie_t askForX11Process(xcb_connection_t* connection,
                                                   std::uint32_t resource) {
    const xcb_res_client_id_spec_t whose{resource, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
    return xcb_res_query_client_ids(connection, 1, &whose);
}

std::optional<std::int64_t> takeX11Process(xcb_connection_t* connection,
                                           xcb_res_query_client_ids_cookie_t cookie) {
    const XcbReply<xcb_res_query_client_ids_reply_t> reply(
        xcb_res_query_client_ids_reply(connection, cookie, nullptr));
    if (!reply) {
        return std::nullopt;
    }
    for (auto id = xcb_res_query_client_ids_ids_iterator(reply.get()); id.rem > 0;
         xcb_res_client_id_value_next(&id)) {
        if (xcb_res_client_id_value_value_length(id.data) > 0) {
            const std::uint32_t process = *xcb_res_client_id_value_value(id.data);
            return process == 0 ? std::nullopt : std::optional<std::int64_t>(process);
        }
    }
    return std::nullopt;
}

}  // namespace ostrel
