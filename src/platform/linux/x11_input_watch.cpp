#include "platform/linux/x11_input_watch.h"

#include <xcb/sync.h>
#include <xcb/xcb.h>

#include <QSocketNotifier>
#include <algorithm>
#include <array>
#include <span>
#include <utility>

#include "platform/linux/qt_x11.h"

namespace ostrel {
namespace {

using std::chrono::milliseconds;

constexpr std::uint8_t kSentByProgram = 0x80;
constexpr milliseconds kPatience{30};

std::int64_t valueOf(const xcb_sync_query_counter_reply_t& reply) {
    return (std::int64_t{reply.counter_value.hi} << 32) | reply.counter_value.lo;
}

std::optional<X11IdleCounters> askForCounters(xcb_connection_t* connection) {
    const XcbReply<xcb_sync_list_system_counters_reply_t> reply(xcb_sync_list_system_counters_reply(
        connection, xcb_sync_list_system_counters(connection), nullptr));
    if (!reply) {
        return std::nullopt;
    }
    const auto* behindHead = reinterpret_cast<const std::byte*>(reply.get() + 1);
    return idleCountersIn({behindHead, std::size_t{reply->length} * 4});
}

}  // namespace

void X11InputWatch::Disconnect::operator()(xcb_connection_t* connection) const {
    xcb_disconnect(connection);
}

X11InputWatch::X11InputWatch() : connection_(xcb_connect(nullptr, nullptr)) {
    xcb_connection_t* connection = connection_.get();
    if (xcb_connection_has_error(connection) != 0) {
        return;
    }
    const xcb_query_extension_reply_t* sync = xcb_get_extension_data(connection, &xcb_sync_id);
    if (sync == nullptr || sync->present == 0) {
        return;
    }
    const XcbReply<xcb_sync_initialize_reply_t> version(xcb_sync_initialize_reply(
        connection, xcb_sync_initialize(connection, XCB_SYNC_MAJOR_VERSION, XCB_SYNC_MINOR_VERSION),
        nullptr));
    isPossible_ = version != nullptr;
    alarmEvent_ = static_cast<std::uint8_t>(sync->first_event + XCB_SYNC_ALARM_NOTIFY);
    notifier_ = std::make_unique<QSocketNotifier>(xcb_get_file_descriptor(connection),
                                                  QSocketNotifier::Read);
    QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(),
                     [this] { handleEvents(); });
}

X11InputWatch::~X11InputWatch() = default;

bool X11InputWatch::findCounters() {
    if (counters_ || !isPossible_) {
        return isPossible_;
    }
    xcb_connection_t* connection = connection_.get();
    counters_ = askForCounters(connection);
    isPossible_ = counters_.has_value();
    if (isPossible_) {
        const std::uint32_t values[] = {counters_->input,
                                        XCB_SYNC_VALUETYPE_ABSOLUTE,
                                        0,  // the two halves of its value
                                        0,
                                        XCB_SYNC_TESTTYPE_NEGATIVE_COMPARISON,
                                        0,  // and of what is added to that when it rang: nothing,
                                        0,  // which makes it ring once
                                        1};
        alarm_ = xcb_generate_id(connection);
        xcb_sync_create_alarm(connection, alarm_,
                              XCB_SYNC_CA_COUNTER | XCB_SYNC_CA_VALUE_TYPE | XCB_SYNC_CA_VALUE |
                                  XCB_SYNC_CA_TEST_TYPE | XCB_SYNC_CA_DELTA | XCB_SYNC_CA_EVENTS,
                              values);
    }
    return isPossible_;
}

std::optional<X11IdleReading> X11InputWatch::read(Alarm alarm) {
    xcb_connection_t* connection = connection_.get();
    if (alarm == Alarm::set) {
        // The server compares with the value that it told last, so it is asked right before.
        const auto unread = xcb_sync_query_counter(connection, counters_->input);
        xcb_discard_reply(connection, unread.sequence);
        const xcb_sync_int64_t none{0, 0};
        xcb_sync_change_alarm(connection, alarm_, XCB_SYNC_CA_VALUE, &none);
    }
    constexpr std::size_t kDevices = X11IdleCounters::kDevices;
    std::array<xcb_sync_query_counter_cookie_t, kDevices + 2> cookies{};
    std::ranges::transform(counters_->devices, cookies.begin(), [connection](auto counter) {
        return xcb_sync_query_counter(connection, counter);
    });
    cookies[kDevices] = xcb_sync_query_counter(connection, counters_->serverTime);
    cookies[kDevices + 1] = xcb_sync_query_counter(connection, counters_->input);
    std::array<std::int64_t, cookies.size()> values{};
    std::ranges::transform(cookies, values.begin(), [this, connection](auto cookie) {
        const XcbReply<xcb_sync_query_counter_reply_t> reply(
            xcb_sync_query_counter_reply(connection, cookie, nullptr));
        hasFailed_ = hasFailed_ || !reply;
        return reply ? valueOf(*reply) : 0;
    });
    takeEvents();
    if (hasFailed_) {
        return std::nullopt;
    }
    X11IdleReading reading;
    std::copy_n(values.begin(), kDevices, reading.devicesMs.begin());
    reading.serverTimeMs = static_cast<std::uint32_t>(values[kDevices]);
    reading.inputMs = values[kDevices + 1];
    return reading;
}

// Also those that came with the answers to questions, of which the notifier would not tell.
void X11InputWatch::takeEvents() {
    while (const XcbReply<xcb_generic_event_t> event{xcb_poll_for_event(connection_.get())}) {
        const int type = event->response_type & ~kSentByProgram;
        hasFailed_ = hasFailed_ || type == 0;
        if (type == alarmEvent_ && !rangAtMs_) {
            rangAtMs_ =
                reinterpret_cast<const xcb_sync_alarm_notify_event_t*>(event.get())->timestamp;
        }
    }
}

// Whether it shows input since the last reading.
bool X11InputWatch::take(const X11IdleReading& reading) {
    const Clock::time_point now = Clock::now();
    const auto rangAtMs = std::exchange(rangAtMs_, std::nullopt);
    std::optional<std::int64_t> sinceMs = reading.inputMs;
    if (isWatched_ && reading.isReset()) {
        sinceMs = rangAtMs ? reading.sinceHiddenMs(*rangAtMs) : std::nullopt;
    }
    if (sinceMs) {
        lastInput_ = std::max(lastInput_, now - milliseconds(*sinceMs));
    }
    return sinceMs.has_value();
}

// Until the alarm is set and silent, or there is input to be remembered: set in the millisecond of
// an event, it rings for that. False: it failed.
bool X11InputWatch::watchOn() {
    const Clock::time_point end = Clock::now() + kPatience;
    bool isSettled = false;
    const bool isWorthIt = resetsLeft_-- > 0;
    while (isWorthIt && !isSettled && Clock::now() < end) {
        const auto reading = read(Alarm::set);
        if (!reading) {
            giveUp();
            return false;
        }
        const bool rang = rangAtMs_.has_value();
        isSettled = take(*reading) || !rang;
        isWatched_ = true;
    }
    isWatched_ = isSettled;
    return true;
}

std::optional<milliseconds> X11InputWatch::sinceInput() {
    resetsLeft_ = kMostResets;
    if (!findCounters() || !watchOn()) {
        return std::nullopt;
    }
    return std::chrono::duration_cast<milliseconds>(Clock::now() - lastInput_);
}

void X11InputWatch::handleEvents() {
    takeEvents();
    if (xcb_connection_has_error(connection_.get()) != 0) {
        giveUp();
        isPossible_ = false;
        notifier_->setEnabled(false);
        return;
    }
    if (!counters_ || !rangAtMs_) {
        return;
    }
    const auto reading = read(Alarm::leave);
    if (!reading) {
        giveUp();
    } else if (!take(*reading)) {
        static_cast<void>(watchOn());
    }
}

// Until the next reading, which looks for the counters anew.
void X11InputWatch::giveUp() {
    if (alarm_ != 0) {
        xcb_sync_destroy_alarm(connection_.get(), alarm_);
    }
    alarm_ = 0;
    counters_.reset();
    rangAtMs_.reset();
    hasFailed_ = false;
    isWatched_ = false;
}

}  // namespace ostrel
