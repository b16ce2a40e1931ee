#pragma once

#include <array>
#include <cstdint>
#include <string_view>
#include <tuple>

#include "base/clock.h"
#include "base/uuid.h"
#include "core/settings/json_record.h"

namespace ostrel {

// What became of one break that fell due.
struct BreakLogEntry {
    enum class Kind { eye, body };
    enum class Outcome { completed, skipped, postponed, autoFadeOut, deferred };

    Uuid id;
    WallTime startedAt;
    WallTime endedAt;
    Kind kind = Kind::eye;
    Outcome outcome = Outcome::completed;
    std::int64_t penaltyAppliedSec = 0;
    std::int64_t durationSec = 0;  // planned length: base, penalty and extensions

    static constexpr auto fields() {
        using E = BreakLogEntry;
        return std::tuple{Field{"id", &E::id},
                          Field{"startedAt", &E::startedAt},
                          Field{"endedAt", &E::endedAt},
                          Field{"kind", &E::kind},
                          Field{"outcome", &E::outcome},
                          Field{"penaltyAppliedSec", &E::penaltyAppliedSec},
                          Field{"durationSec", &E::durationSec}};
    }

    // A break that faded out by itself at its end was taken as well.
    [[nodiscard]] bool isTaken() const {
        return outcome == Outcome::completed || outcome == Outcome::autoFadeOut;
    }

    bool operator==(const BreakLogEntry&) const = default;
};

constexpr std::array<std::string_view, 2> enumNames(BreakLogEntry::Kind) {
    return {"eye", "body"};
}
constexpr std::array<std::string_view, 5> enumNames(BreakLogEntry::Outcome) {
    return {"completed", "skipped", "postponed", "autoFadeOut", "deferred"};
}

using BreakKind = BreakLogEntry::Kind;

}  // namespace ostrel
