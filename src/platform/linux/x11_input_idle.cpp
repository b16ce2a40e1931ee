#include "platform/linux/x11_input_idle.h"

#include <xcb/screensaver.h>
#include <xcb/sync.h>
#include <xcb/xcb.h>

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <vector>

#include "platform/linux/qt_x11.h"

namespace ostrel {
namespace {

using std::chrono::milliseconds;

// Right behind its length, where the library's own accessor misses it by the padding of its struct.
std::string_view nameOf(const xcb_sync_systemcounter_t& counter) {
    constexpr std::size_t kNameOffset = offsetof(xcb_sync_systemcounter_t, name_len) + 2;
    return {reinterpret_cast<const char*>(&counter) + kNameOffset, counter.name_len};
}

std::vector<xcb_sync_counter_t> idleCountersOfDevices(xcb_connection_t* connection) {
    constexpr std::string_view kPrefix = "DEVICEIDLETIME ";
    const XcbReply<xcb_sync_list_system_counters_reply_t> reply(xcb_sync_list_system_counters_reply(
        connection, xcb_sync_list_system_counters(connection), nullptr));
    std::vector<xcb_sync_counter_t> counters;
    if (!reply) {
        return counters;
    }
    for (auto found = xcb_sync_list_system_counters_counters_iterator(reply.get()); found.rem > 0;
         xcb_sync_systemcounter_next(&found)) {
        if (nameOf(*found.data).starts_with(kPrefix)) {
            counters.push_back(found.data->counter);
        }
    }
    return counters;
}

// Empty where the server does not count by device.
std::vector<milliseconds> idleTimesOfDevices(xcb_connection_t* connection) {
    const xcb_query_extension_reply_t* sync = xcb_get_extension_data(connection, &xcb_sync_id);
    if (sync == nullptr || sync->present == 0) {
        return {};
    }
    std::vector<xcb_sync_query_counter_cookie_t> cookies;
    for (const xcb_sync_counter_t counter : idleCountersOfDevices(connection)) {
        cookies.push_back(xcb_sync_query_counter(connection, counter));
    }
    std::vector<milliseconds> times;
    for (const xcb_sync_query_counter_cookie_t cookie : cookies) {
        const XcbReply<xcb_sync_query_counter_reply_t> reply(
            xcb_sync_query_counter_reply(connection, cookie, nullptr));
        if (reply) {
            times.emplace_back((std::int64_t{reply->counter_value.hi} << 32) |
                               reply->counter_value.lo);
        }
    }
    return times;
}

// Input comes from one device and its master. Whoever resets the screen saver, or no longer
// suspends it, sets them all back at once, those that only programs can press included.
bool wasScreenSaverReset(xcb_connection_t* connection) {
    constexpr milliseconds kAtOnce{10};
    const std::vector<milliseconds> times = idleTimesOfDevices(connection);
    const auto [least, most] = std::ranges::minmax_element(times);
    return times.size() > 2 && *most - *least < kAtOnce;
}

}  // namespace

X11InputIdle::X11InputIdle() {
    xcb_connection_t* connection = qtX11Connection();
    if (connection == nullptr || isXInsideWayland(connection)) {
        return;
    }
    const xcb_query_extension_reply_t* extension =
        xcb_get_extension_data(connection, &xcb_screensaver_id);
    if (extension != nullptr && extension->present != 0) {
        root_ = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
    }
}

std::optional<double> X11InputIdle::secondsSinceLastInput() const {
    xcb_connection_t* connection = root_ == 0 ? nullptr : qtX11Connection();
    if (connection == nullptr) {
        return std::nullopt;
    }
    const auto cookie = xcb_screensaver_query_info(connection, root_);
    const XcbReply<xcb_screensaver_query_info_reply_t> reply(
        xcb_screensaver_query_info_reply(connection, cookie, nullptr));
    if (!reply) {
        return std::nullopt;
    }
    const Clock::time_point now = Clock::now();
    const Clock::time_point event = now - milliseconds(reply->ms_since_user_input);
    const bool isNew = event > lastReading_;
    lastReading_ = now;
    if (!lastInput_ || (isNew && !wasScreenSaverReset(connection))) {
        lastInput_ = event;
    }
    return std::chrono::duration<double>(now - *lastInput_).count();
}

}  // namespace ostrel
