// TimerEngine: asking for a break, and holding it back while a meeting or a video runs.

#include <algorithm>
#include <chrono>
#include <utility>

#include "core/engine/timer_engine.h"
#include "core/settings/settings_store.h"

namespace ostrel {

void TimerEngine::requestBreak(BreakKind kind) {
    if (hasReasonToHold()) {
        beginHold(kind);
    } else {
        openBreak(kind);
    }
}

bool TimerEngine::hasReasonToHold() const {
    const EngineCollaborators& others = services_.collaborators;
    return (others.meetingWatcher && others.meetingWatcher->isMeetingActive()) ||
           (services_.settingsStore.settings()->delayBreakOnFullscreenVideo &&
            others.videoPlaybackDetector && others.videoPlaybackDetector->isVideoPlaying());
}

void TimerEngine::openBreak(BreakKind kind) {
    withdrawBreakSoon();
    dismissToast();
    sendOpen(kind);
}

// The only place that takes from the penalty pool: what is taken is on the screen.
void TimerEngine::sendOpen(BreakKind kind) {
    if (kind == BreakKind::body) {
        shouldOpenBodyBreak.send(0);
        return;
    }
    SkipPenalties* penalties = services_.collaborators.penaltyEngine;
    shouldOpenEyeBreak.send(penalties ? penalties->consumePenalty() : 0);
}

void TimerEngine::beginHold(BreakKind kind) {
    heldKind_ = kind;
    deferralStartedAt_ = services_.now();
    holdBegan.send(kind);
    showToast(EngineToasts::Message::breakHeld);
    scheduleHoldCheck();
}

// A body break that is due asks for itself whether anything is in its way; what held the eye break
// may be over and not yet noticed.
void TimerEngine::takeOverHold() {
    if (hasReasonToHold()) {
        heldKind_ = BreakKind::body;
        holdEnded.send(BreakKind::eye, HoldEnd::folded);
        holdBegan.send(BreakKind::body);
    } else {
        endHold(HoldEnd::folded);
        openBreak(BreakKind::body);
    }
}

bool TimerEngine::hasHoldRunOut() const {
    if (!deferralStartedAt_) {
        return false;
    }
    const std::int64_t capSec =
        std::max(kLeastHoldSec, services_.settingsStore.settings()->maxDeferralSec);
    return services_.now() - *deferralStartedAt_ >= wallSec(capSec);
}

// A completion that the watcher still holds when the hold has ended by other means, or when the
// engine is gone, finds another generation and does nothing.
void TimerEngine::scheduleHoldCheck() {
    auto check = [this, alive = std::weak_ptr(alive_), generation = deferralGeneration_] {
        if (!alive.expired() && generation == deferralGeneration_ && isDeferring()) {
            checkHold();
        }
    };
    if (MeetingPresenceGuarding* watcher = services_.collaborators.meetingWatcher) {
        watcher->waitUntilClear(std::move(check));
    } else {
        holdCheckTimer_ =
            services_.runLoop.callAfter(std::chrono::seconds(kHoldRecheckSec), std::move(check));
    }
}

void TimerEngine::checkHold() {
    if (hasReasonToHold()) {
        if (hasHoldRunOut()) {
            dropHeldBreak();
        } else {
            scheduleHoldCheck();
        }
        return;
    }
    const BreakKind kind = *heldKind_;
    endHold(HoldEnd::opened);
    openBreak(kind);
}

void TimerEngine::dropHeldBreak() {
    const BreakKind kind = *heldKind_;
    const WallTime startedAt = *deferralStartedAt_;
    endHold(HoldEnd::dropped);
    logEntry(kind, BreakLogEntry::Outcome::deferred, startedAt, services_.now());
    showToast(EngineToasts::Message::breakDropped);
    if (kind == BreakKind::body) {
        undoMerge();
    }
}

void TimerEngine::endHold(HoldEnd how) {
    ++deferralGeneration_;
    holdCheckTimer_.cancel();
    deferralStartedAt_.reset();
    if (const auto kind = std::exchange(heldKind_, std::nullopt)) {
        holdEnded.send(*kind, how);
    }
}

void TimerEngine::cancelHold() {
    endHold(HoldEnd::cancelled);
}

}  // namespace ostrel
