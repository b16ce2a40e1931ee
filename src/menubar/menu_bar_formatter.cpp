#include "menubar/menu_bar_formatter.h"

#include <algorithm>
#include <array>
#include <cstdio>

#include "base/checked_seconds.h"

namespace ostrel::MenuBarFormatter {
namespace {

double fraction(std::int64_t left, std::int64_t interval) {
    if (interval <= 0) {
        return 0;
    }
    return std::clamp(static_cast<double>(left) / static_cast<double>(interval), 0.0, 1.0);
}

Status statusOf(const Context& context) {
    if (!context.isEnabled) {
        return Status::off;
    }
    if (context.isPaused) {
        return Status::paused;
    }
    return context.isAway ? Status::away : Status::running;
}

}  // namespace

std::string countdownText(std::int64_t seconds) {
    const auto shown = static_cast<long long>(std::max<std::int64_t>(seconds, 0));
    std::array<char, 32> text{};
    const int length =
        std::snprintf(text.data(), text.size(), "%02lld:%02lld", shown / 60, shown % 60);
    return {text.data(), static_cast<std::size_t>(length)};
}

NearestChannel nearestChannel(const TimerState& state) {
    if (state.body.remainingSec < state.eye.remainingSec) {
        return {Channel::body, state.body.remainingSec};
    }
    return {Channel::eye, state.eye.remainingSec};
}

Output format(const Context& context) {
    const NearestChannel nearest = nearestChannel(context.state);
    const std::int64_t penalty = std::max<std::int64_t>(context.pendingPenalty, 0);
    return {countdownText(addSec(nearest.remainingSec, penalty)),
            statusOf(context),
            nearest.kind,
            fraction(context.state.eye.remainingSec, context.eyeIntervalSec),
            fraction(context.state.body.remainingSec, context.bodyIntervalSec),
            penalty > 0};
}

}  // namespace ostrel::MenuBarFormatter
