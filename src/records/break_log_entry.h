#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "base/clock.h"

namespace ostrel {

// What became of one break that fell due.
struct BreakLogEntry {
    enum class Kind { eye, body };
    enum class Outcome { completed, skipped, postponed, autoFadeOut, deferred };

    std::string id;  // a fresh UUID
    WallTime startedAt;
    WallTime endedAt;
    Kind kind = Kind::eye;
    Outcome outcome = Outcome::completed;
    std::int64_t penaltyAppliedSec = 0;
    std::int64_t durationSec = 0;  // planned length: base, penalty and extensions

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
