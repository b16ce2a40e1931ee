#pragma once

#include <cmath>
#include <optional>

namespace ostrel {

// The seconds without input that a reading of the event source stands for: below zero for an
// instant after a wake-up, and no number where there is no session to watch.
[[nodiscard]] inline std::optional<double> idleSecondsOf(double reading) {
    if (!std::isfinite(reading)) {
        return std::nullopt;
    }
    return reading > 0 ? reading : 0;
}

}  // namespace ostrel
