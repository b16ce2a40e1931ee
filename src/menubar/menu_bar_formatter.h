#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "core/engine/break_timer.h"

// Turns the engine's state into what the status item shows. A pure function, so that the result can
// be compared with the one before and nothing is redrawn in vain.
namespace ostrel::MenuBarFormatter {

enum class Channel { eye, body };
constexpr std::array<std::string_view, 2> enumNames(Channel) {
    return {"eye", "body"};
}

enum class Status { running, paused, away, off };
constexpr std::array<std::string_view, 4> enumNames(Status) {
    return {"running", "paused", "away", "off"};
}

struct Context {
    TimerState state;
    std::int64_t pendingPenalty = 0;  // seconds waiting in the penalty pool
    bool isEnabled = true;
    bool isPaused = false;
    bool isAway = false;
    bool strictMode = false;
    std::int64_t eyeIntervalSec = 0;
    std::int64_t bodyIntervalSec = 0;
};

struct NearestChannel {
    Channel kind = Channel::eye;
    std::int64_t remainingSec = 0;
};

struct Output {
    std::string title;  // countdown text of the nearest break, penalty included
    Status status = Status::running;
    Channel nearest = Channel::eye;
    double eyeFraction = 0;   // 0 to 1: full just after a break
    double bodyFraction = 0;  // likewise
    bool penaltyPending = false;

    bool operator==(const Output&) const = default;
};

// "MM:SS" with minutes that are not capped; less than nothing left shows "00:00".
[[nodiscard]] std::string countdownText(std::int64_t seconds);

// The break that comes first; a tie goes to the eye break.
[[nodiscard]] NearestChannel nearestChannel(const TimerState& state);

[[nodiscard]] Output format(const Context& context);

}  // namespace ostrel::MenuBarFormatter
