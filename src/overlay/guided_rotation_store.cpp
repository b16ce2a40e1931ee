#include "overlay/guided_rotation_store.h"

#include <algorithm>

#include "base/checked_seconds.h"

namespace ostrel {
namespace {

constexpr std::int64_t kMoveSec = 60;

// Also of a counter from a document that somebody edited.
std::int64_t inRange(std::int64_t counter) {
    constexpr std::int64_t kEnd = GuidedRotationStore::kCounterEnd;
    return (counter % kEnd + kEnd) % kEnd;
}

}  // namespace

GuidedRotationStore::GuidedRotationStore(PreferencesStore& preferences)
    : document_(preferences, "ostrel.guidedRotation.v1"),
      snapshot_(document_.load().value_or(Snapshot{})) {
    snapshot_ = {inRange(snapshot_.eye), inRange(snapshot_.body), inRange(snapshot_.message)};
}

std::int64_t GuidedRotationStore::startIndex(BreakKind kind) const {
    return kind == BreakKind::eye ? snapshot_.eye : snapshot_.body;
}

std::int64_t GuidedRotationStore::nextMessageIndex() {
    const std::int64_t index = snapshot_.message;
    snapshot_.message = inRange(addSec(index, 1));
    document_.save(snapshot_);
    return index;
}

void GuidedRotationStore::advance(BreakKind kind, std::int64_t count) {
    std::int64_t& counter = kind == BreakKind::eye ? snapshot_.eye : snapshot_.body;
    counter = inRange(addSec(counter, count));
    document_.save(snapshot_);
}

std::int64_t GuidedRotationStore::movesCovered(const ActiveOverlaySession& session) {
    if (session.kind == BreakKind::eye) {
        return 1;
    }
    const std::int64_t elapsedSec =
        std::max<std::int64_t>(subtractSec(session.totalSec(), session.remainingSec), 0);
    return elapsedSec / kMoveSec + 1;
}

}  // namespace ostrel
