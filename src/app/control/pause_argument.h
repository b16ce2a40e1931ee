#pragma once

#include <optional>
#include <string_view>

#include "core/engine/pause_duration.h"

namespace ostrel {

// The length of a pause as people type it: "45m" or "2h", from a minute to a day, "until-morning"
// or "indefinite". Absent for anything else.
[[nodiscard]] std::optional<PauseDuration> parsePause(std::string_view text);

}  // namespace ostrel
