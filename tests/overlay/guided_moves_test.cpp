#include "overlay/guided_moves.h"

#include <gtest/gtest.h>

#include <limits>

#include "overlay/guided_rotation_store.h"
#include "platform/virtual/memory_preferences.h"

namespace ostrel {

using Kind = BreakLogEntry::Kind;

constexpr std::int64_t kMost = std::numeric_limits<std::int64_t>::max();

TEST(GuidedMoves, AnEyeBreakKeepsItsMoveAndABodyBreakChangesItEveryMinute) {
    const struct {
        Kind kind;
        std::int64_t startIndex, totalSec, remainingSec;
        const char* id;
        std::int64_t covered;
    } cases[] = {
        {Kind::eye, 8, 240, 60, "figure_eight", 1},
        {Kind::body, 8, 300, 241, "quad_stretch", 1},
        {Kind::body, 8, 300, 240, "deep_breaths", 2},
        {Kind::body, kMost, 300, 180, "deep_breaths", 3},
        // None begins when the time is over, though the next breaks go on after it.
        {Kind::body, 0, 120, 0, "shoulder_rolls", 3},
        // More left than there was in all, and nothing to last at all.
        {Kind::body, 0, 60, 600, "neck_rolls", 1},
        {Kind::body, 0, 0, 0, "neck_rolls", 1},
    };
    for (const auto& [kind, startIndex, totalSec, remainingSec, id, covered] : cases) {
        ActiveOverlaySession session;
        session.kind = kind;
        session.baseDurationSec = totalSec;
        session.remainingSec = remainingSec;
        session.guideStartIndex = startIndex;
        EXPECT_EQ(GuidedMoveCatalog::moveOf(session).id, id)
            << startIndex << ", " << remainingSec << " of " << totalSec;
        EXPECT_EQ(GuidedRotationStore::movesCovered(session), covered)
            << remainingSec << " of " << totalSec;
    }
}

TEST(GuidedRotation, CountersGoRoundAndAreKept) {
    constexpr const char* kKey = "ostrel.guidedRotation.v1";
    MemoryPreferences preferences;
    preferences.write(kKey, R"({"eye":999999,"body":7,"message":999999})");
    GuidedRotationStore rotation(preferences);
    EXPECT_EQ(rotation.startIndex(BreakKind::eye), 999'999);
    EXPECT_EQ(rotation.nextMessageIndex(), 999'999);
    EXPECT_EQ(rotation.nextMessageIndex(), 0);
    rotation.advance(BreakKind::eye, 1);
    rotation.advance(BreakKind::body, 6);
    EXPECT_EQ(preferences.read(kKey), R"({"eye":0,"body":13,"message":1})");
}

}  // namespace ostrel
