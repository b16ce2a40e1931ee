#include "core/engine/timer_engine.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include "base/checked_seconds.h"
#include "core/settings/settings_store.h"

namespace ostrel {

using std::chrono::seconds;

TimerEngine::TimerEngine(Services services, Ticking ticking)
    : services_(std::move(services)),
      ticking_(ticking),
      wasEnabled_(services_.settingsStore.settings()->ostrelEnabled),
      pauseForgotten_(services_.sessionStateStore, services_.runLoop,
                      services_.collaborators.notificationCenter) {
    settingsChanges_ =
        services_.settingsStore.settings().onChange([this](const SettingsModel& settings) {
            if (std::exchange(wasEnabled_, settings.ostrelEnabled) && !settings.ostrelEnabled) {
                stopSchedule();
            }
        });
    if (SkipPenalties* penalties = services_.collaborators.penaltyEngine) {
        penaltyPoolChanges_ = penalties->unconsumedPenaltySec().onChange([this](std::int64_t pool) {
            TimerState next = *state_;
            next.eye.pendingPenaltySec = pool;
            state_.set(next);
        });
    }
}

TimerEngine::~TimerEngine() = default;

std::int64_t TimerEngine::activeIntervalSec(BreakKind kind) const {
    return kind == BreakKind::eye ? activeEyeIntervalSec_ : activeBodyIntervalSec_;
}

void TimerEngine::setIsOverlayPresented(std::function<bool()> isOverlayPresented) {
    isOverlayPresented_ = std::move(isOverlayPresented);
}

bool TimerEngine::isOverlayPresented() const {
    return isOverlayPresented_ && isOverlayPresented_();
}

const BreakTimer& TimerEngine::timer(BreakKind kind) const {
    return kind == BreakKind::eye ? state_->eye : state_->body;
}

TimerEngine::CycleFlags& TimerEngine::flags(BreakKind kind) {
    return kind == BreakKind::eye ? eyeFlags_ : bodyFlags_;
}

void TimerEngine::configure(const PresetDefinition& preset) {
    activeEyeIntervalSec_ = preset.eyeIntervalSec;
    activeBodyIntervalSec_ = preset.bodyIntervalSec;
    const bool isRunning = !services_.sessionStateStore.isPaused();
    const SkipPenalties* penalties = services_.collaborators.penaltyEngine;
    state_.set({{activeEyeIntervalSec_, isRunning, false,
                 penalties ? *penalties->unconsumedPenaltySec() : 0},
                {activeBodyIntervalSec_, isRunning, false, 0}});
    restorePause();
    startTicking();
}

void TimerEngine::startTicking() {
    if (ticking_ == Ticking::automatic && !tickTimer_) {
        tickTimer_ = services_.runLoop.repeat(seconds(1), seconds(1), [this] { tick(); });
    }
}

void TimerEngine::tick() {
    if (!services_.settingsStore.settings()->ostrelEnabled ||
        services_.sessionStateStore.isPaused()) {
        return;
    }
    if (hasHoldRunOut()) {
        checkHold();
    }
    if (state_->eye.isRunning && !state_->eye.isAway) {
        stepEye();
    }
    if (state_->body.isRunning && !state_->body.isAway) {
        stepBody();
    }
    if (++ticksSinceLastPoolHousekeeping_ >= kHousekeepingTicks) {
        ticksSinceLastPoolHousekeeping_ = 0;
        if (services_.collaborators.penaltyEngine) {
            services_.collaborators.penaltyEngine->expireIfStale();
        }
    }
}

void TimerEngine::countDown(BreakKind kind) {
    if (timer(kind).remainingSec > 0) {
        setRemaining(kind, timer(kind).remainingSec - 1);
    }
}

void TimerEngine::setRemaining(BreakKind kind, std::int64_t remainingSec) {
    TimerState next = *state_;
    (kind == BreakKind::eye ? next.eye : next.body).remainingSec = remainingSec;
    state_.set(next);
}

void TimerEngine::stepEye() {
    // One that was postponed while it waited counts down again.
    const bool waits = eyeWaitsBehindHold_ && state_->eye.remainingSec <= 0;
    if (waits && (isDeferring() || isOverlayPresented())) {
        return;
    }
    eyeWaitsBehindHold_ = false;
    countDown(BreakKind::eye);
    const bool merges = eyeWillMerge();
    if (!merges) {
        warn(BreakKind::eye);
    }
    if (state_->eye.remainingSec > 0) {
        return;
    }
    const bool bodyIsHeld = heldKind_ == BreakKind::body;
    if (heldKind_ == BreakKind::eye) {
        resetTimer(BreakKind::eye);
    } else if (bodyIsHeld && !services_.settingsStore.settings()->mergeNearbyBreaks) {
        setRemaining(BreakKind::eye, 0);
        eyeWaitsBehindHold_ = true;
    } else if (merges || bodyIsHeld || isOverlayPresented()) {
        foldEyeIntoBody(bodyIsHeld ? 0 : state_->body.remainingSec);
    } else {
        resetTimer(BreakKind::eye);
        requestBreak(BreakKind::eye);
    }
}

void TimerEngine::stepBody() {
    countDown(BreakKind::body);
    warn(BreakKind::body);
    if (state_->body.remainingSec > 0) {
        return;
    }
    const bool eyeIsHeld = heldKind_ == BreakKind::eye;
    const bool takesOver = eyeIsHeld && services_.settingsStore.settings()->mergeNearbyBreaks;
    if (isOverlayPresented() || (eyeIsHeld && !takesOver)) {
        setRemaining(BreakKind::body, 0);
        return;
    }
    resetTimer(BreakKind::body);
    if (heldKind_ == BreakKind::body) {
        return;
    }
    if (takesOver) {
        foldEyeIntoBody(0);
        takeOverHold();
    } else {
        requestBreak(BreakKind::body);
    }
}

bool TimerEngine::eyeWillMerge() const {
    const SettingsModel& settings = *services_.settingsStore.settings();
    const BreakTimer& body = state_->body;
    if (!settings.mergeNearbyBreaks || !body.isRunning || body.isAway) {
        return false;
    }
    const std::int64_t gapSec = subtractSec(body.remainingSec, state_->eye.remainingSec);
    return gapSec >= 0 && subtractSec(gapSec, kMergeSlackSec) <= settings.eyeBreakDurationSec;
}

void TimerEngine::foldEyeIntoBody(std::int64_t secondsUntilBody) {
    resetTimer(BreakKind::eye);
    if (std::exchange(eyeMergedIntoBody_, true)) {
        return;
    }
    const EngineToasts* toasts = services_.collaborators.toastDispatcher;
    if (toasts && !toasts->isToastOnScreen() && !isOverlayPresented()) {
        const std::int64_t minutes = secondsUntilBody / 60 + (secondsUntilBody % 60 > 0 ? 1 : 0);
        showToast(EngineToasts::Message::merged, std::max<std::int64_t>(minutes, 1));
    }
}

void TimerEngine::undoMerge() {
    if (std::exchange(eyeMergedIntoBody_, false)) {
        setRemaining(BreakKind::eye, std::min(state_->eye.remainingSec, kUndoneMergeCapSec));
    }
}

void TimerEngine::resetTimer(BreakKind kind) {
    setRemaining(kind, activeIntervalSec(kind));
    flags(kind) = {};
    if (kind == BreakKind::eye) {
        eyeWaitsBehindHold_ = false;
    }
}

void TimerEngine::restartCountdowns() {
    resetTimer(BreakKind::eye);
    resetTimer(BreakKind::body);
    eyeMergedIntoBody_ = false;
}

void TimerEngine::clearCycleFlags() {
    eyeFlags_ = {};
    bodyFlags_ = {};
    withdrawBreakSoon();
    dismissToast();
}

bool TimerEngine::isInWarningWindow(BreakKind kind, std::int64_t leadSec) const {
    const std::int64_t remainingSec = timer(kind).remainingSec;
    return leadSec > 0 && leadSec < activeIntervalSec(kind) && remainingSec > 0 &&
           remainingSec <= leadSec && !isOverlayPresented();
}

void TimerEngine::warn(BreakKind kind) {
    const SettingsModel& settings = *services_.settingsStore.settings();
    const EngineCollaborators& others = services_.collaborators;
    CycleFlags& cycle = flags(kind);
    const std::int64_t remainingSec = timer(kind).remainingSec;
    if (!cycle.didScheduleBreakSoon && others.notificationCenter &&
        isInWarningWindow(kind, settings.breakSoonLeadSec)) {
        cycle.didScheduleBreakSoon = true;
        const bool canPostpone =
            others.postponeService && others.postponeService->remainingPostpones() > 0;
        others.notificationCenter->postBreakSoon(kind, remainingSec, canPostpone);
    }
    if (!cycle.didShowPreBreakToast && others.toastDispatcher &&
        isInWarningWindow(kind, settings.preBreakToastLeadSec) &&
        !others.toastDispatcher->isToastOnScreen()) {
        cycle.didShowPreBreakToast = true;
        showToast(kind == BreakKind::eye ? EngineToasts::Message::preBreakEye
                                         : EngineToasts::Message::preBreakBody,
                  remainingSec,
                  {[this, kind] { startNow(kind); }, [this, kind] { postpone(kind); }});
    }
}

void TimerEngine::startNow(BreakKind kind) {
    if (isOverlayPresented()) {
        return;
    }
    cancelHold();
    clearCycleFlags();
    if (kind == BreakKind::eye) {
        eyeMergedIntoBody_ = false;
    }
    resetTimer(kind);
    sendOpen(kind);
}

bool TimerEngine::postpone(BreakKind kind) {
    PostponeRation* ration = services_.collaborators.postponeService;
    if (!ration || isOverlayPresented() || isDeferring()) {
        return false;
    }
    const WallTime now = services_.now();
    if (!ration->tryPostpone()) {
        showToast(EngineToasts::Message::postponeNoneLeft);
        return false;
    }
    setRemaining(kind, addSec(timer(kind).remainingSec, PostponeRation::kPostponeSec));
    withdrawWarnings();
    logEntry(kind, BreakLogEntry::Outcome::postponed, now, now);
    return true;
}

void TimerEngine::postponePresented(BreakKind kind) {
    setRemaining(kind, PostponeRation::kPostponeSec);
}

void TimerEngine::bodyBreakNotCompleted() {
    undoMerge();
}

bool TimerEngine::takeMergedEyeBreak() {
    return std::exchange(eyeMergedIntoBody_, false);
}

void TimerEngine::resumeAfterLongAbsence(std::int64_t elapsedSec) {
    if (elapsedSec <= kLongAbsenceSec) {
        return;
    }
    restartCountdowns();
    clearPenalties();
    withdrawWarnings();
}

void TimerEngine::applyPreset(const PresetDefinition& preset) {
    activeEyeIntervalSec_ = preset.eyeIntervalSec;
    activeBodyIntervalSec_ = preset.bodyIntervalSec;
    services_.settingsStore.update(
        [&preset](SettingsModel& settings) { PresetCatalog::writeInto(settings, preset); });
    restartCountdowns();
    clearPenalties();
    clearCycleFlags();
}

void TimerEngine::applySettings(const SettingsModel& settings) {
    const PresetDefinition timing = PresetCatalog::active(settings);
    services_.settingsStore.update([&settings](SettingsModel& all) { all = settings; });
    changeInterval(BreakKind::eye, timing.eyeIntervalSec);
    changeInterval(BreakKind::body, timing.bodyIntervalSec);
}

void TimerEngine::applyOwnTiming(PresetDefinition timing) {
    timing.id = PresetCatalog::kOwnID;
    SettingsModel settings = *services_.settingsStore.settings();
    PresetCatalog::writeInto(settings, timing);
    applySettings(settings);
}

void TimerEngine::changeInterval(BreakKind kind, std::int64_t intervalSec) {
    std::int64_t& active = kind == BreakKind::eye ? activeEyeIntervalSec_ : activeBodyIntervalSec_;
    if (std::exchange(active, intervalSec) == intervalSec) {
        return;
    }
    const CycleFlags warned = flags(kind);
    resetTimer(kind);
    if (warned.didScheduleBreakSoon || warned.didShowPreBreakToast) {
        withdrawWarnings();
    }
}

void TimerEngine::clearPenalties() {
    TimerState next = *state_;
    next.eye.pendingPenaltySec = 0;
    next.body.pendingPenaltySec = 0;
    state_.set(next);
    if (services_.collaborators.penaltyEngine) {
        services_.collaborators.penaltyEngine->clearPenalty();
    }
}

void TimerEngine::markUserIdle() {
    setAway(true);
}

void TimerEngine::markUserReturned(std::int64_t awaySec) {
    setAway(false);
    creditAway(awaySec);
}

void TimerEngine::setAway(bool isAway) {
    TimerState next = *state_;
    next.eye.isAway = isAway;
    next.body.isAway = isAway;
    state_.set(next);
}

void TimerEngine::creditAway(std::int64_t awaySec) {
    const SettingsModel& settings = *services_.settingsStore.settings();
    if (!settings.creditAwayAsBreak || awaySec <= 0 || awaySec > kLongestCreditedAwaySec ||
        isOverlayPresented()) {
        return;
    }
    const bool creditsEye = awaySec >= settings.eyeBreakDurationSec;
    const bool creditsBody = awaySec >= settings.bodyBreakDurationSec;
    if (!creditsEye && !creditsBody) {
        return;
    }
    if (creditsEye) {
        resetTimer(BreakKind::eye);
    }
    if (creditsBody) {
        resetTimer(BreakKind::body);
        eyeMergedIntoBody_ = false;
    }
    clearCycleFlags();
    if (creditsEye) {
        absenceCredited.send(BreakKind::eye);
    }
    if (creditsBody) {
        absenceCredited.send(BreakKind::body);
    }
    using Message = EngineToasts::Message;
    const Message oneOfThem = creditsEye ? Message::awayCreditEye : Message::awayCreditBody;
    showToast(creditsEye && creditsBody ? Message::awayCreditBoth : oneOfThem,
              std::max<std::int64_t>(awaySec / 60, 1));
}

void TimerEngine::showToast(EngineToasts::Message message, std::optional<std::int64_t> argument,
                            const EngineToasts::Handlers& handlers) {
    if (services_.collaborators.toastDispatcher) {
        services_.collaborators.toastDispatcher->show(message, argument, handlers);
    }
}

void TimerEngine::dismissToast() {
    if (services_.collaborators.toastDispatcher) {
        services_.collaborators.toastDispatcher->dismiss();
    }
}

void TimerEngine::withdrawBreakSoon() {
    if (services_.collaborators.notificationCenter) {
        services_.collaborators.notificationCenter->cancelBreakSoon();
    }
}

// What was announced is no longer about to come.
void TimerEngine::withdrawWarnings() {
    withdrawBreakSoon();
    if (services_.collaborators.toastDispatcher) {
        services_.collaborators.toastDispatcher->dismissCounting();
    }
}

void TimerEngine::logEntry(BreakKind kind, BreakLogEntry::Outcome outcome, WallTime startedAt,
                           WallTime endedAt) {
    if (services_.collaborators.breakLog) {
        services_.collaborators.breakLog->append(
            {services_.makeUuid(), startedAt, endedAt, kind, outcome, 0, 0});
    }
}

}  // namespace ostrel
