#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "base/checked_seconds.h"
#include "base/clock.h"
#include "records/break_log_entry.h"

namespace ostrel {

// The break on screen.
struct ActiveOverlaySession {
    using Kind = BreakLogEntry::Kind;

    // `intro` is the first few seconds, `ended` the time after the countdown reached zero.
    enum class Phase { intro, quiet, ended };
    static constexpr std::int64_t kIntroSec = 3;

    Kind kind = Kind::eye;
    std::int64_t baseDurationSec = 0;  // from the settings
    std::int64_t penaltySec = 0;       // skip penalty carried into this break
    WallTime startedAt;
    std::int64_t remainingSec = 0;
    std::int64_t extensionsAppliedSec = 0;
    std::int64_t guideStartIndex = 0;
    std::optional<std::string> message;  // the user's own

    bool operator==(const ActiveOverlaySession&) const = default;

    [[nodiscard]] std::int64_t totalSec() const {
        return addSec(addSec(baseDurationSec, penaltySec), extensionsAppliedSec);
    }
    [[nodiscard]] Phase phase() const {
        if (remainingSec <= 0) {
            return Phase::ended;
        }
        return subtractSec(totalSec(), remainingSec) < kIntroSec ? Phase::intro : Phase::quiet;
    }
};

// Why a break left the screen.
enum class CloseReason {
    skipped,
    done,
    autoFade,
    postponed,
    forcedBySleep,
    forcedByPause,
    skippedGently
};
constexpr std::array<std::string_view, 7> enumNames(CloseReason) {
    return {"skipped",       "done",          "autoFade",     "postponed",
            "forcedBySleep", "forcedByPause", "skippedGently"};
}

// What the user can do about the break; the last two answer the gentle card's question. The name is
// the action's identifier; a button's object name is "ostrel.overlay.action." followed by it.
enum class OverlayAction { done, skip, postpone, gentleDone, gentleSkip };
constexpr std::array<std::string_view, 5> enumNames(OverlayAction) {
    return {"done", "skip", "postpone", "gentle_done", "gentle_skip"};
}

}  // namespace ostrel
