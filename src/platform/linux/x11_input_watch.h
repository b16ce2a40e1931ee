#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>

#include "platform/linux/x11_idle_counters.h"
#include "platform/linux/x11_idle_reading.h"

class QSocketNotifier;
struct xcb_connection_t;

namespace ostrel {

// Follows the X server's idle time, of which the resets of its screen saver are no part. A player
// that keeps the screen on that way sets it back, as input does, and hides the input before.
//
// So an alarm (SYNC) rings at the first event after each reading. It wakes us once until the next
// reading when that is input, else once for each reset. Resets that come faster than is worth to
// follow count as input.
class X11InputWatch {
  public:
    static constexpr int kMostResets = 20;  // between two readings

    // To the server that DISPLAY names, over a connection of its own: alarms that are on their way
    // can be had at once, where Qt reads its own connection in a thread.
    X11InputWatch();
    X11InputWatch(const X11InputWatch&) = delete;
    X11InputWatch& operator=(const X11InputWatch&) = delete;
    ~X11InputWatch();

    // Absent where the server does not count by device.
    [[nodiscard]] std::optional<std::chrono::milliseconds> sinceInput();

  private:
    using Clock = std::chrono::steady_clock;
    enum class Alarm { set, leave };
    struct Disconnect {
        void operator()(xcb_connection_t* connection) const;
    };

    [[nodiscard]] bool findCounters();
    [[nodiscard]] std::optional<X11IdleReading> read(Alarm alarm);
    [[nodiscard]] bool take(const X11IdleReading& reading);
    [[nodiscard]] bool watchOn();
    void takeEvents();
    void handleEvents();
    void giveUp();

    std::unique_ptr<xcb_connection_t, Disconnect> connection_;
    bool isPossible_ = false;
    std::uint8_t alarmEvent_ = 0;
    std::uint32_t alarm_ = 0;
    std::optional<X11IdleCounters> counters_;  // absent until asked, and after a failure
    bool hasFailed_ = false;
    std::optional<std::uint32_t> rangAtMs_;  // the first since the last reading, on its server
    bool isWatched_ = false;  // without a gap since the last reading, or since input was seen
    int resetsLeft_ = 0;
    Clock::time_point lastInput_;
    std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace ostrel
