#pragma once

#include <array>
#include <cstdint>
#include <optional>

#include "platform/linux/x11_idle_counters.h"

namespace ostrel {

// What the counters showed, read in the order of the members, in milliseconds. The server's time
// wraps every 49 days.
struct X11IdleReading {
    std::array<std::int64_t, X11IdleCounters::kDevices> devicesMs{};
    std::uint32_t serverTimeMs = 0;
    std::int64_t inputMs = 0;

    // Whether the last event was no input but a reset of the screen saver. That of any device is
    // read last, so it can only have grown meanwhile, or be back at 0.
    [[nodiscard]] bool isReset() const;

    // Of a reading after a reset: how long ago an alarm was sent at that time of the server, if it
    // was before the reset, which has hidden what it was about.
    [[nodiscard]] std::optional<std::int64_t> sinceHiddenMs(std::uint32_t alarmTimeMs) const;
};

}  // namespace ostrel
