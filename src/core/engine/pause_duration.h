#pragma once

#include <cstdint>
#include <optional>

#include "base/clock.h"

namespace ostrel {

class Calendar;
struct SettingsModel;

// How long the user pauses.
struct PauseDuration {
    enum class Kind { minutes, untilNextMorning, indefinite };

    [[nodiscard]] static PauseDuration forMinutes(std::int64_t count) {
        return {Kind::minutes, count};
    }
    [[nodiscard]] static PauseDuration untilNextMorning() { return {Kind::untilNextMorning, 0}; }
    [[nodiscard]] static PauseDuration indefinite() { return {Kind::indefinite, 0}; }

    Kind kind = Kind::indefinite;
    std::int64_t minutes = 0;  // of Kind::minutes only
};

// When such a pause ends; absent for an indefinite one. The next morning is the next time the clock
// shows the start of work hours, or 09:00 without work hours.
[[nodiscard]] std::optional<WallTime> pauseEnd(PauseDuration duration,
                                               const SettingsModel& settings,
                                               const Calendar& calendar, WallTime now);

}  // namespace ostrel
