#include "overlay/guided_moves.h"

#include <algorithm>
#include <vector>

#include "base/fatal.h"

namespace ostrel {
namespace {

struct Named {
    std::string_view id;
    std::string_view symbol;
};

constexpr Named kBody[] = {
    {"neck_rolls", "figure.mind.and.body"},
    {"shoulder_rolls", "figure.cooldown"},
    {"chest_opener", "figure.arms.open"},
    {"side_stretch", "figure.flexibility"},
    {"calf_raises", "figure.stairs"},
    {"hip_circles", "figure.dance"},
    {"wrist_stretch", "hand.raised"},
    {"water_walk", "figure.walk"},
    {"quad_stretch", "figure.strengthtraining.functional"},
    {"deep_breaths", "wind"},
};

constexpr Named kEye[] = {
    {"far_focus", "binoculars"},  {"palming", "hand.raised.fingers.spread"},
    {"figure_eight", "infinity"}, {"slow_blinks", "eye"},
    {"near_far", "scope"},        {"daylight", "sun.max"},
};

std::vector<GuidedMove> withKeys(std::string_view kind, std::span<const Named> named) {
    std::vector<GuidedMove> moves;
    moves.reserve(named.size());
    for (const auto& [id, symbol] : named) {
        const std::string key = "guide." + std::string(kind) + "." + std::string(id);
        moves.push_back({id, symbol, key + ".title", key + ".instruction"});
    }
    return moves;
}

}  // namespace

std::span<const GuidedMove> GuidedMoveCatalog::moves(BreakLogEntry::Kind kind) {
    static const std::vector<GuidedMove> kBodyMoves = withKeys("body", kBody);
    static const std::vector<GuidedMove> kEyeMoves = withKeys("eye", kEye);
    return kind == BreakLogEntry::Kind::eye ? kEyeMoves : kBodyMoves;
}

std::int64_t GuidedMoveCatalog::wrap(std::int64_t index, std::int64_t count) {
    if (count <= 0) {
        fatal("an index is wrapped into an empty list");
    }
    const std::int64_t rest = index % count;
    return rest < 0 ? rest + count : rest;
}

const GuidedMove& GuidedMoveCatalog::moveOf(const ActiveOverlaySession& session) {
    const auto list = moves(session.kind);
    const auto count = static_cast<std::int64_t>(list.size());
    std::int64_t index = wrap(session.guideStartIndex, count);
    if (session.kind == BreakLogEntry::Kind::body) {
        const std::int64_t elapsedSec = subtractSec(session.totalSec(), session.remainingSec);
        const std::int64_t lastSec = subtractSec(session.totalSec(), 1);
        index += std::max<std::int64_t>(std::min(elapsedSec, lastSec), 0) / kBodyMoveSec;
    }
    return list[static_cast<std::size_t>(wrap(index, count))];
}

}  // namespace ostrel
