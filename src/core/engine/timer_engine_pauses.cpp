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
        session.setPendingPauseForgottenFireAt(now + wallSec(PauseForgottenReminder::kDelaySec));
    }
    // First: a pause of just an hour ends before it could be called forgotten.
    if (reason == PauseReason::user) {
        armUserPauseEnd();
    }
    if (begins || reason == PauseReason::user) {
        pauseForgotten_.schedule(now);
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
        pauseForgotten_.withdraw();
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
    pauseForgotten_.forget();
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
    if (services_.sessionStateStore.isPaused()) {
        armUserPauseEnd();
        pauseForgotten_.restore();
    } else {
        pauseForgotten_.forget();
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

}  // namespace ostrel
