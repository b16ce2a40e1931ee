#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "overlay/active_overlay_session.h"

namespace ostrel {

// A small exercise that a break guides through.
struct GuidedMove {
    std::string_view id;
    std::string_view symbol;  // the system's name of a picture for it
    std::string title;        // localisation keys: guide.KIND.ID.title and .instruction
    std::string instruction;
};

// The guided moves there are, and which of them a break shows.
class GuidedMoveCatalog {
  public:
    // How long a body break stays with one move.
    static constexpr std::int64_t kBodyMoveSec = 60;

    // The moves of this kind of break, in their order. They live as long as the process.
    [[nodiscard]] static std::span<const GuidedMove> moves(BreakLogEntry::Kind kind);

    // `index` brought into 0 to `count` - 1; a negative one counts from the end. A count of 0 is a
    // fatal error.
    [[nodiscard]] static std::int64_t wrap(std::int64_t index, std::int64_t count);

    // What `session` shows now: an eye break one move for its whole length, a body break another
    // one every minute. None begins when the countdown is at zero.
    [[nodiscard]] static const GuidedMove& moveOf(const ActiveOverlaySession& session);
};

}  // namespace ostrel
