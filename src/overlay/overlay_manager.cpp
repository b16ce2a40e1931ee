#include "overlay/overlay_manager.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include "core/engine/timer_engine.h"
#include "core/settings/settings_store.h"

namespace ostrel {
namespace {

constexpr std::uint32_t kEscapeKey = 53;
constexpr std::uint32_t kReturnKey = 36;
constexpr std::uint32_t kSpaceKey = 49;
constexpr std::uint32_t kPKey = 35;
constexpr int kGenericHaptic = 0;

CloseReason closeReasonOf(OverlayAction action) {
    switch (action) {
        case OverlayAction::done:
        case OverlayAction::gentleDone:
            return CloseReason::done;
        case OverlayAction::skip:
            return CloseReason::skipped;
        case OverlayAction::gentleSkip:
            return CloseReason::skippedGently;
        case OverlayAction::postpone:
            break;
    }
    return CloseReason::postponed;
}

}  // namespace

OverlayManager::OverlayManager(Services services, Timing timing)
    : services_(std::move(services)), timing_(timing), rotation_(services_.preferences) {
    if (!(timing_.tickInterval > 0)) {
        fatal("a break that does not count down");
    }
    tickSec_ = wholeSec(timing_.tickInterval);
    TimerEngine& engine = services_.timerEngine;
    subscriptions_.push_back(engine.shouldOpenEyeBreak.subscribe([this](std::int64_t penaltySec) {
        present(BreakKind::eye, settingsStore().settings()->eyeBreakDurationSec, penaltySec);
    }));
    subscriptions_.push_back(engine.shouldOpenBodyBreak.subscribe([this](std::int64_t penaltySec) {
        present(BreakKind::body, settingsStore().settings()->bodyBreakDurationSec, penaltySec);
    }));
    subscriptions_.push_back(
        engine.shouldCloseOverlayForPause.subscribe([this] { close(CloseReason::forcedByPause); }));
    subscriptions_.push_back(
        services_.systemEvents.willSleep.subscribe([this] { close(CloseReason::forcedBySleep); }));
    subscriptions_.push_back(services_.displays.changed.subscribe([this] { rebuildWindows(); }));
    subscriptions_.push_back(services_.systemEvents.isSessionOnScreen.onChange(
        [this](const bool&) { rebuildWindows(); }));
    engine.setIsOverlayPresented([this] { return activeSession_->has_value(); });
}

OverlayManager::~OverlayManager() {
    services_.timerEngine.setIsOverlayPresented(nullptr);
}

void OverlayManager::present(BreakKind kind, std::int64_t baseDurationSec,
                             std::int64_t penaltySec) {
    if (activeSession_->has_value()) {
        return;
    }
    fadingWindows_.clear();
    didFireAutoFade_ = false;
    gentleStage_ = GentleCard::Stage::counting;
    // All that can close the break again is armed before anybody hears of it.
    countdownTimer_ = services_.runLoop.repeat(
        runLoopSec(timing_.tickInterval), runLoopSec(timing_.tickInterval), [this] { tick(); });
    activeSession_.set(makeSession(kind, baseDurationSec, penaltySec));
    bannerDismissed_.set(false);
    SkipPenalties* penalties = services_.records.penaltyEngine;
    recentSkipCount_.set(penalties ? penalties->recentSkipCount() : 0);
    if (!activeSession_->has_value()) {
        return;
    }
    const SettingsModel& settings = *settingsStore().settings();
    const BreakPresentation presentation =
        kind == BreakKind::eye ? settings.eyePresentation : settings.bodyPresentation;
    if (presentation == BreakPresentation::gentle && services_.records.gentleCards) {
        showCard();
    } else {
        awaitFirstPaint();
        syncWindows();
    }
    didPresent.send();
    if (services_.records.chimes) {
        services_.records.chimes->playStart();
    }
    services_.haptics.play(kGenericHaptic);
    if (penaltySec > 0) {
        penaltyAppliedPublisher.send(penaltySec);
    }
}

ActiveOverlaySession OverlayManager::makeSession(BreakKind kind, std::int64_t baseDurationSec,
                                                 std::int64_t penaltySec) {
    ActiveOverlaySession session;
    session.kind = kind;
    session.baseDurationSec = baseDurationSec;
    session.penaltySec = penaltySec;
    session.startedAt = services_.now();
    session.remainingSec = addSec(baseDurationSec, penaltySec);
    session.guideStartIndex = rotation_.startIndex(kind);
    if (const auto& messages = settingsStore().settings()->customBreakMessages; !messages.empty()) {
        const auto index = static_cast<std::size_t>(rotation_.nextMessageIndex());
        session.message = messages[index % messages.size()];
    }
    return session;
}

void OverlayManager::tick() {
    ActiveOverlaySession session = **activeSession_;
    session.remainingSec = std::max<std::int64_t>(subtractSec(session.remainingSec, tickSec_), 0);
    activeSession_.set(session);
    if (!activeSession_->has_value()) {
        return;
    }
    if (session.remainingSec == 0 && !std::exchange(didFireAutoFade_, true)) {
        reachZero();
    }
    updateCard();
}

void OverlayManager::reachZero() {
    const BreakKind kind = (*activeSession_)->kind;
    if (isGentle()) {
        didReachZero.send(kind);
        judgeRest();
        return;
    }
    closeAfterFade();
    didReachZero.send(kind);
    if (services_.records.chimes) {
        services_.records.chimes->playEnd();
    }
}

void OverlayManager::closeAfterFade() {
    const BreakKind kind = (*activeSession_)->kind;
    autoFadeTimer_ =
        services_.runLoop.callAfter(runLoopSec(timing_.autoFadeDelaySec), [this, kind] {
            const auto& session = *activeSession_;
            if (session && session->kind == kind && session->remainingSec == 0) {
                close(CloseReason::autoFade);
            }
        });
}

// What a record does about the end of a break may well be a reason to close it once more.
void OverlayManager::close(CloseReason reason) {
    if (!activeSession_->has_value() || std::exchange(isClosing_, true)) {
        return;
    }
    const ActiveOverlaySession session = **activeSession_;
    countdownTimer_.cancel();
    autoFadeTimer_.cancel();
    firstPaintTimer_.cancel();
    rotation_.advance(session.kind, GuidedRotationStore::movesCovered(session));
    // One instant for all that is written: each document takes its time to get to the disk.
    applyEffects(session, reason, services_.now());
    if (const auto cardID = std::exchange(gentleCardID_, std::nullopt)) {
        services_.records.gentleCards->dismissCard(*cardID);
    } else {
        closeWindows();
    }
    isClosing_ = false;
    activeSession_.set(std::nullopt);
    didClose.send(session.kind, reason);
}

void OverlayManager::applyEffects(const ActiveOverlaySession& session, CloseReason reason,
                                  WallTime now) {
    using Outcome = BreakLogEntry::Outcome;
    const OverlayRecords& records = services_.records;
    switch (reason) {
        case CloseReason::skipped:
            log(session, session.kind, Outcome::skipped, session.penaltySec, now);
            if (records.penaltyEngine) {
                records.penaltyEngine->registerSkip(session.kind);
            }
            services_.haptics.play(kGenericHaptic);
            break;
        case CloseReason::skippedGently:
            log(session, session.kind, Outcome::skipped, session.penaltySec, now);
            if (records.dailyCounter) {
                records.dailyCounter->recordSkip();
            }
            break;
        case CloseReason::done:
            complete(session, Outcome::completed, now);
            return;
        case CloseReason::autoFade:
            complete(session, Outcome::autoFadeOut, now);
            return;
        case CloseReason::postponed:
            log(session, session.kind, Outcome::postponed, session.penaltySec, now);
            if (records.postponeService && records.postponeService->tryPostpone()) {
                services_.timerEngine.postponePresented(session.kind);
            }
            return;
        case CloseReason::forcedBySleep:
        case CloseReason::forcedByPause:
            break;
    }
    if (session.kind == BreakKind::body) {
        services_.timerEngine.bodyBreakNotCompleted();
    }
}

void OverlayManager::complete(const ActiveOverlaySession& session, BreakLogEntry::Outcome outcome,
                              WallTime now) {
    log(session, session.kind, outcome, session.penaltySec, now);
    DailyCounting* counter = services_.records.dailyCounter;
    if (session.kind == BreakKind::eye) {
        if (counter) {
            counter->recordEyeCompleted();
        }
        return;
    }
    if (counter) {
        counter->recordBodyCompleted();
    }
    if (services_.timerEngine.takeMergedEyeBreak()) {
        if (counter) {
            counter->recordEyeCompleted();
        }
        log(session, BreakKind::eye, BreakLogEntry::Outcome::completed, 0, now);
    }
}

void OverlayManager::log(const ActiveOverlaySession& session, BreakKind kind,
                         BreakLogEntry::Outcome outcome, std::int64_t penaltySec, WallTime now) {
    if (services_.records.breakLog) {
        services_.records.breakLog->append({services_.makeUuid(), session.startedAt, now, kind,
                                            outcome, penaltySec, session.totalSec()});
    }
}

bool OverlayManager::canPostpone() const {
    return services_.records.postponeService &&
           services_.records.postponeService->remainingPostpones() > 0;
}

bool OverlayManager::enables(OverlayAction action) const {
    const auto& session = *activeSession_;
    return session && offers(action) &&
           (action != OverlayAction::done || session->remainingSec <= 0);
}

bool OverlayManager::press(OverlayAction action) {
    if (!enables(action)) {
        return false;
    }
    close(closeReasonOf(action));
    return true;
}

// Modifiers play no part: Shift-Escape skips like Escape.
KeyOutcome OverlayManager::handleKey(std::uint32_t virtualKeyCode) {
    const auto& session = *activeSession_;
    if (!session) {
        return KeyOutcome::ignored;
    }
    if (virtualKeyCode == kEscapeKey && !settingsStore().settings()->strictMode) {
        close(CloseReason::skipped);
        return KeyOutcome::skip;
    }
    if ((virtualKeyCode == kReturnKey || virtualKeyCode == kSpaceKey) &&
        session->remainingSec <= 0) {
        close(CloseReason::done);
        return KeyOutcome::done;
    }
    if (virtualKeyCode == kPKey && enables(OverlayAction::postpone)) {
        close(CloseReason::postponed);
        return KeyOutcome::postpone;
    }
    return KeyOutcome::ignored;
}

}  // namespace ostrel
