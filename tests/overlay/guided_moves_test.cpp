#include "overlay/guided_moves.h"

#include <gtest/gtest.h>

#include <limits>

namespace ostrel {

using Kind = BreakLogEntry::Kind;

ActiveOverlaySession sessionAt(Kind kind, std::int64_t totalSec, std::int64_t remainingSec,
                               std::int64_t startIndex) {
    ActiveOverlaySession session;
    session.kind = kind;
    session.baseDurationSec = totalSec;
    session.remainingSec = remainingSec;
    session.guideStartIndex = startIndex;
    return session;
}

TEST(GuidedMoves, StandInTheirOrderUnderTheKeysOfTheirKind) {
    std::string listed;
    for (const Kind kind : {Kind::body, Kind::eye}) {
        for (const GuidedMove& move : GuidedMoveCatalog::moves(kind)) {
            const std::string key =
                "guide." + std::string(nameOf(kind)) + "." + std::string(move.id);
            EXPECT_EQ(move.title, key + ".title");
            EXPECT_EQ(move.instruction, key + ".instruction");
            listed += std::string(move.id) + " " + std::string(move.symbol) + "\n";
        }
    }
    EXPECT_EQ(listed,
              "neck_rolls figure.mind.and.body\nshoulder_rolls figure.cooldown\n"
              "chest_opener figure.arms.open\nside_stretch figure.flexibility\n"
              "calf_raises figure.stairs\nhip_circles figure.dance\nwrist_stretch hand.raised\n"
              "water_walk figure.walk\nquad_stretch figure.strengthtraining.functional\n"
              "deep_breaths wind\n"
              "far_focus binoculars\npalming hand.raised.fingers.spread\nfigure_eight infinity\n"
              "slow_blinks eye\nnear_far scope\ndaylight sun.max\n");
}

TEST(GuidedMoves, AnIndexWrapsBothWays) {
    constexpr std::int64_t kMost = std::numeric_limits<std::int64_t>::max();
    constexpr std::int64_t kLeast = std::numeric_limits<std::int64_t>::min();
    const struct {
        std::int64_t index, count, wrapped;
    } cases[] = {
        {0, 10, 0},   {9, 10, 9},   {10, 10, 0},    {8, 6, 2},       {-1, 10, 9},
        {-10, 10, 0}, {-11, 10, 9}, {kMost, 10, 7}, {kLeast, 10, 2}, {-1, kMost, kMost - 1}};
    for (const auto& [index, count, wrapped] : cases) {
        EXPECT_EQ(GuidedMoveCatalog::wrap(index, count), wrapped) << index << " of " << count;
    }
    EXPECT_DEATH(static_cast<void>(GuidedMoveCatalog::wrap(0, 0)), "empty list");
}

TEST(GuidedMoves, AnEyeBreakKeepsItsMoveAndABodyBreakChangesItEveryMinute) {
    const struct {
        Kind kind;
        std::int64_t startIndex, totalSec, remainingSec;
        const char* id;
    } cases[] = {
        {Kind::eye, 8, 240, 240, "figure_eight"},
        {Kind::eye, 8, 240, 60, "figure_eight"},
        {Kind::body, 10, 300, 300, "neck_rolls"},
        {Kind::body, 8, 300, 241, "quad_stretch"},
        {Kind::body, 8, 300, 240, "deep_breaths"},
        {Kind::body, 8, 300, 181, "deep_breaths"},
        {Kind::body, 8, 300, 180, "neck_rolls"},
        {Kind::body, -1, 300, 300, "deep_breaths"},
        {Kind::body, std::numeric_limits<std::int64_t>::max(), 300, 180, "deep_breaths"},
        // More left than there was in all, and nothing to last at all.
        {Kind::body, 0, 60, 600, "neck_rolls"},
        {Kind::body, 0, 0, 0, "neck_rolls"},
    };
    for (const auto& [kind, startIndex, totalSec, remainingSec, id] : cases) {
        EXPECT_EQ(GuidedMoveCatalog::moveOf(sessionAt(kind, totalSec, remainingSec, startIndex)).id,
                  id)
            << startIndex << ", " << remainingSec << " of " << totalSec;
    }
}

TEST(GuidedMoves, NoMoveBeginsWhenTheTimeIsOver) {
    EXPECT_EQ(GuidedMoveCatalog::moveOf(sessionAt(Kind::body, 120, 1, 0)).id, "shoulder_rolls");
    EXPECT_EQ(GuidedMoveCatalog::moveOf(sessionAt(Kind::body, 120, 0, 0)).id, "shoulder_rolls");
    ActiveOverlaySession longer = sessionAt(Kind::body, 120, 0, 0);
    longer.penaltySec = 60;
    EXPECT_EQ(GuidedMoveCatalog::moveOf(longer).id, "chest_opener");
}

}  // namespace ostrel
