#include <gtest/gtest.h>

#include "overlay/guided_rotation_store.h"
#include "platform/virtual/memory_preferences.h"

namespace ostrel {
namespace {

constexpr const char* kKey = "ostrel.guidedRotation.v1";

std::int64_t covered(BreakKind kind, std::int64_t totalSec, std::int64_t remainingSec) {
    ActiveOverlaySession session;
    session.kind = kind;
    session.baseDurationSec = totalSec;
    session.remainingSec = remainingSec;
    return GuidedRotationStore::movesCovered(session);
}

}  // namespace

TEST(GuidedRotationTest, CountersGoRoundAndAreKept) {
    MemoryPreferences preferences;
    preferences.write(kKey, R"({"eye":999999,"body":7,"message":999999})");
    GuidedRotationStore rotation(preferences);
    EXPECT_EQ(rotation.startIndex(BreakKind::eye), 999'999);
    EXPECT_EQ(rotation.nextMessageIndex(), 999'999);
    EXPECT_EQ(rotation.nextMessageIndex(), 0);
    rotation.advance(BreakKind::eye, 1);
    rotation.advance(BreakKind::body, 6);
    EXPECT_EQ(preferences.read(kKey), R"({"eye":0,"body":13,"message":1})");
    EXPECT_EQ(GuidedRotationStore(preferences).startIndex(BreakKind::body), 13);
}

TEST(GuidedRotationTest, WhatNobodyWroteBeginsInRange) {
    for (const auto& [bytes, eye] :
         {std::pair{R"({"eye":-1,"body":0,"message":-9223372036854775808})", 999'999},
          std::pair{R"({"eye":9223372036854775807,"body":0,"message":0})", 775'807},
          std::pair{R"({"eye":3,"body":0})", 0}, std::pair{"[]", 0}}) {
        MemoryPreferences preferences;
        preferences.write(kKey, bytes);
        GuidedRotationStore rotation(preferences);
        EXPECT_EQ(rotation.startIndex(BreakKind::eye), eye) << bytes;
        EXPECT_GE(rotation.nextMessageIndex(), 0) << bytes;
    }
}

TEST(GuidedRotationTest, BodyBreaksCoverAMoveAMinuteAndOneMore) {
    EXPECT_EQ(covered(BreakKind::body, 300, 241), 1);
    EXPECT_EQ(covered(BreakKind::body, 300, 240), 2);
    EXPECT_EQ(covered(BreakKind::body, 300, 0), 6);
    EXPECT_EQ(covered(BreakKind::body, 300, 500), 1);
    EXPECT_EQ(covered(BreakKind::eye, 240, 0), 1);
}

}  // namespace ostrel
