#include "platform/linux/x11_idle_reading.h"

#include <algorithm>

namespace ostrel {

bool X11IdleReading::isReset() const {
    return std::ranges::all_of(devicesMs, [this](std::int64_t idle) { return idle <= inputMs; });
}

std::optional<std::int64_t> X11IdleReading::sinceHiddenMs(std::uint32_t alarmTimeMs) const {
    const std::uint32_t resetTimeMs = serverTimeMs - static_cast<std::uint32_t>(inputMs);
    const bool wasBefore = static_cast<std::int32_t>(resetTimeMs - alarmTimeMs) > 0;
    return wasBefore ? std::optional(std::int64_t{serverTimeMs - alarmTimeMs}) : std::nullopt;
}

}  // namespace ostrel
