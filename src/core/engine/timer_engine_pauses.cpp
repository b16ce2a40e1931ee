// TimerEngine: pausing by reason and what ends a pause.

#include <utility>

#include "core/engine/timer_engine.h"
#include "core/settings/settings_store.h"

namespace ostrel {

void TimerEngine::pause(PauseReason reason, std::optional<WallTime> until) {
    SessionStateStore& session = services_.sessionStateStore;
    const bool begins = !session.isPaused();
    // One that says again what it said before must not close a break that was started since then.
    const bool isNew = reason == PauseReason::user || !session.holds(reason);
    const WallTime now = services_.now();
    session.addReason(reason, until, now);
    if (begins) {
        session.setPendingPauseForgottenFireAt(now + wallSec(kPauseForgottenSec));
    }
    // First: a pause of just an hour ends before it could be called forgotten.
    if (reason == PauseReason::user) {
        armUserPauseEnd();
    }
    if (begins || reason == PauseReason::user) {
        armPauseForgotten();
        schedulePauseForgotten();
    }
    setRunning(false);
    if (isNew) {
        stopSchedule();
    }
}

// Also when the schedule is switched off: nothing that was due or announced stays behind.
void TimerEngine::stopSchedule() {
    clearCycleFlags();
    const bool heldBodyBreak = heldKind_ == BreakKind::body;
    cancelHold();
    if (heldBodyBreak) {
        undoMerge();
    }
    shouldCloseOverlayForPause.send();
}

void TimerEngine::pauseByUser(PauseDuration duration) {
    pause(PauseReason::user, pauseEnd(duration, *services_.settingsStore.settings(),
                                      services_.calendar, services_.now()));
}

void TimerEngine::endPause(PauseReason reason, Countdowns countdowns) {
    SessionStateStore& session = services_.sessionStateStore;
    if (!session.holds(reason)) {
        // Somebody may have ended the pause early; what begins anew at its end still does.
        if (countdowns == Countdowns::restart && !session.isPaused()) {
            resume(countdowns);
        }
        return;
    }
    session.removeReason(reason);
    if (reason == PauseReason::user) {
        userPauseTimer_.cancel();
        withdrawPauseForgotten();
    }
    if (!session.isPaused()) {
        resume(countdowns);
    }
}

void TimerEngine::endAllPauses() {
    if (!services_.sessionStateStore.isPaused()) {
        return;
    }
    services_.sessionStateStore.clearAllReasons();
    userPauseTimer_.cancel();
    resume(Countdowns::keep);
}

void TimerEngine::togglePause() {
    if (services_.sessionStateStore.isPaused()) {
        endAllPauses();
    } else {
        pauseByUser(PauseDuration::indefinite());
    }
}

void TimerEngine::resume(Countdowns countdowns) {
    setRunning(true);
    forgetPauseForgotten();
    if (countdowns == Countdowns::restart) {
        restartCountdowns();
    }
    clearCycleFlags();
}

void TimerEngine::setRunning(bool isRunning) {
    TimerState next = *state_;
    next.eye.isRunning = isRunning;
    next.body.isRunning = isRunning;
    state_.set(next);
}

// After a relaunch: a timed pause of the user goes on; of any other nothing is left.
void TimerEngine::restorePause() {
    const SessionStateStore& session = services_.sessionStateStore;
    if (session.isPaused()) {
        armUserPauseEnd();
        armPauseForgotten();
        const auto fireAt = session.current()->pendingPauseForgottenFireAt;
        if (fireAt && services_.collaborators.notificationCenter) {
            services_.collaborators.notificationCenter->restorePauseForgotten(*fireAt);
        }
    } else {
        forgetPauseForgotten();
    }
}

void TimerEngine::forgetPauseForgotten() {
    pauseForgottenTimer_.cancel();
    withdrawPauseForgotten();
    if (services_.sessionStateStore.current()->pendingPauseForgottenFireAt) {
        services_.sessionStateStore.setPendingPauseForgottenFireAt(std::nullopt);
    }
}

void TimerEngine::armUserPauseEnd() {
    userPauseTimer_.cancel();
    const auto until = services_.sessionStateStore.current()->userPauseUntil;
    if (!until) {
        return;
    }
    userPauseTimer_ = services_.runLoop.callAt(*until, [this] {
        endPause(PauseReason::user);
        showToast(EngineToasts::Message::pauseEnded);
    });
}

// The reminder waits with the system, also across a relaunch. It must not reach anybody who did not
// pause: when it falls due and the user does not hold the pause, it is withdrawn.
void TimerEngine::armPauseForgotten() {
    if (const auto fireAt = services_.sessionStateStore.current()->pendingPauseForgottenFireAt) {
        pauseForgottenTimer_ = services_.runLoop.callAt(*fireAt, [this] {
            if (!services_.sessionStateStore.holds(PauseReason::user)) {
                withdrawPauseForgotten();
            }
        });
    }
}

void TimerEngine::schedulePauseForgotten() {
    const auto fireAt = services_.sessionStateStore.current()->pendingPauseForgottenFireAt;
    if (fireAt && *fireAt > services_.now() && services_.collaborators.notificationCenter) {
        services_.collaborators.notificationCenter->schedulePauseForgotten(*fireAt);
    }
}

void TimerEngine::withdrawPauseForgotten() {
    if (services_.collaborators.notificationCenter) {
        services_.collaborators.notificationCenter->cancelPauseForgotten();
    }
}

}  // namespace ostrel
