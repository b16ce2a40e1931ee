#include "platform/linux/x11_saver_suspensions.h"

#include <xcb/res.h>
#include <xcb/xcb.h>

#include <string_view>
#include <vector>

#include "platform/linux/qt_x11.h"
#include "platform/linux/x11_process.h"

namespace ostrel {
namespace {

constexpr std::string_view kSuspension = "SaverSuspend";

bool holds(const xcb_res_query_client_resources_reply_t& resources, xcb_atom_t type) {
    for (auto entry = xcb_res_query_client_resources_types_iterator(&resources); entry.rem > 0;
         xcb_res_type_next(&entry)) {
        if (entry.data->resource_type == type && entry.data->count > 0) {
            return true;
        }
    }
    return false;
}

// The programs, each by the first of its numbers, that hold something of that type.
std::vector<std::uint32_t> clientsThatHold(xcb_connection_t* connection, xcb_atom_t type) {
    const XcbReply<xcb_res_query_clients_reply_t> clients(
        xcb_res_query_clients_reply(connection, xcb_res_query_clients(connection), nullptr));
    struct Question {
        std::uint32_t client;
        xcb_res_query_client_resources_cookie_t cookie;
    };
    std::vector<Question> questions;
    if (clients) {
        for (auto client = xcb_res_query_clients_clients_iterator(clients.get()); client.rem > 0;
             xcb_res_client_next(&client)) {
            const std::uint32_t base = client.data->resource_base;
            questions.push_back({base, xcb_res_query_client_resources(connection, base)});
        }
    }
    std::vector<std::uint32_t> holders;
    for (const Question& question : questions) {
        const XcbReply<xcb_res_query_client_resources_reply_t> resources(
            xcb_res_query_client_resources_reply(connection, question.cookie, nullptr));
        if (resources && holds(*resources, type)) {
            holders.push_back(question.client);
        }
    }
    return holders;
}

}  // namespace

X11SaverSuspensions::X11SaverSuspensions() {
    xcb_connection_t* connection = qtX11Connection();
    if (connection == nullptr) {
        return;
    }
    const xcb_query_extension_reply_t* resources = xcb_get_extension_data(connection, &xcb_res_id);
    if (resources == nullptr || resources->present == 0) {
        return;
    }
    const XcbReply<xcb_intern_atom_reply_t> atom(xcb_intern_atom_reply(
        connection, xcb_intern_atom(connection, 0, kSuspension.size(), kSuspension.data()),
        nullptr));
    suspension_ = atom ? atom->atom : xcb_atom_t{XCB_ATOM_NONE};
}

std::set<std::int64_t> X11SaverSuspensions::processes() const {
    xcb_connection_t* connection = suspension_ == 0 ? nullptr : qtX11Connection();
    std::set<std::int64_t> found;
    if (connection == nullptr) {
        return found;
    }
    for (const std::uint32_t client : clientsThatHold(connection, suspension_)) {
        if (const auto process = x11ProcessOf(connection, client)) {
            found.insert(*process);
        }
    }
    return found;
}

}  // namespace ostrel
