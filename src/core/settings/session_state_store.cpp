#include "core/settings/session_state_store.h"

#include <utility>

namespace ostrel {
namespace {

bool userPauseSurvives(const SessionStateModel& stored, WallTime now) {
    return stored.pauseReasons.contains(PauseReason::user) && stored.userPauseUntil &&
           now < *stored.userPauseUntil &&
           *stored.userPauseUntil <= now + SessionStateStore::kLongestRestoredPause;
}

SessionStateModel restored(const std::optional<SessionStateModel>& stored, WallTime now) {
    SessionStateModel model;
    model.lastQuitAt = now;
    if (!stored) {
        return model;
    }
    model.lastQuitAt = stored->lastQuitAt;
    model.systemSleepWakeMarker = stored->systemSleepWakeMarker;
    model.pendingPauseForgottenFireAt = stored->pendingPauseForgottenFireAt;
    if (userPauseSurvives(*stored, now)) {
        model.isPaused = true;
        model.pauseReasons = {PauseReason::user};
        model.pausedAt = stored->pausedAt;
        model.userPauseUntil = stored->userPauseUntil;
    }
    return model;
}

void endPause(SessionStateModel& model) {
    model.pausedAt.reset();
    model.pendingPauseForgottenFireAt.reset();
}

}  // namespace

SessionStateStore::SessionStateStore(PreferencesStore& preferences, WallTime now)
    : document_(preferences, kKey), current_(restored(document_.load(), now)) {}

bool SessionStateStore::holds(PauseReason reason) const {
    return current_->pauseReasons.contains(reason);
}

void SessionStateStore::addReason(PauseReason reason, std::optional<WallTime> until, WallTime now) {
    SessionStateModel next = *current_;
    if (next.pauseReasons.empty()) {
        next.pausedAt = now;
    }
    next.pauseReasons.insert(reason);
    if (reason == PauseReason::user) {
        next.userPauseUntil = until;
    }
    commit(std::move(next));
}

void SessionStateStore::removeReason(PauseReason reason) {
    SessionStateModel next = *current_;
    next.pauseReasons.erase(reason);
    if (reason == PauseReason::user) {
        next.userPauseUntil.reset();
    }
    if (next.pauseReasons.empty()) {
        endPause(next);
    }
    commit(std::move(next));
}

void SessionStateStore::clearAllReasons() {
    SessionStateModel next = *current_;
    next.pauseReasons.clear();
    next.userPauseUntil.reset();
    endPause(next);
    commit(std::move(next));
}

bool SessionStateStore::hasUserPauseExpired(WallTime now) const {
    return holds(PauseReason::user) && current_->userPauseUntil && *current_->userPauseUntil <= now;
}

void SessionStateStore::setPendingPauseForgottenFireAt(std::optional<WallTime> fireAt) {
    SessionStateModel next = *current_;
    next.pendingPauseForgottenFireAt = fireAt;
    commit(std::move(next));
}

void SessionStateStore::setLastQuitAt(WallTime time) {
    SessionStateModel next = *current_;
    next.lastQuitAt = time;
    commit(std::move(next));
}

void SessionStateStore::setSystemSleepWakeMarker(std::optional<WallTime> marker) {
    SessionStateModel next = *current_;
    next.systemSleepWakeMarker = marker;
    commit(std::move(next));
}

void SessionStateStore::commit(SessionStateModel next) {
    next.isPaused = !next.pauseReasons.empty();
    document_.save(next);
    current_.set(std::move(next));
}

}  // namespace ostrel
