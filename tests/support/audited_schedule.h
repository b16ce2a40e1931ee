#pragma once

#include <memory>
#include <string>
#include <utility>

#include "support/presence_audit.h"

namespace ostrel {

// An environment over the virtual platform, and all that a user and a system can do to it. Whatever
// is done is noted and audited at once.
class AuditedSchedule {
  public:
    AuditedSchedule(std::string zone, WallTime start, const SettingsModel& settings, Counts& counts)
        : platform_(std::move(zone), start),
          audit_(platform_, counts),
          presence_(platform_, audit_, settings) {
        platform_.preferences.write(SettingsStore::kKey, *printJson(settings).text);
        audit_.skips().setDisabled(settings.disableSkipPenalty);
        launch();
    }
    AuditedSchedule(const AuditedSchedule&) = delete;
    AuditedSchedule& operator=(const AuditedSchedule&) = delete;
    ~AuditedSchedule() { audit_.stopWatching(); }

    [[nodiscard]] ScheduleAudit& audit() { return audit_; }
    [[nodiscard]] const std::string& fault() { return findings().fault(); }
    [[nodiscard]] const SettingsModel& settings() {
        return *environment_->settingsStore().settings();
    }
    [[nodiscard]] bool isPaused() { return environment_->sessionStateStore().isPaused(); }
    [[nodiscard]] BreakKind nextKind() {
        const TimerState& timers = *engine().state();
        return timers.eye.remainingSec <= timers.body.remainingSec ? BreakKind::eye
                                                                   : BreakKind::body;
    }
    [[nodiscard]] WallTime now() const { return platform_.runLoop.wallNow(); }
    [[nodiscard]] RunLoopTime runLoopNow() const { return platform_.runLoop.now(); }
    [[nodiscard]] const auto& session() { return *overlay().activeSession(); }

    // Second by second, until a break opens or closes.
    void run(std::int64_t seconds) {
        const bool wasOpen = audit_.isBreakOpen();
        for (; seconds > 0 && audit_.isBreakOpen() == wasOpen && fault().empty(); --seconds) {
            runFor(1);
        }
    }

    void press(OverlayAction action) {
        note("press " + std::string(nameOf(action)));
        const auto before = session();
        const bool isPossible = before && isEnabled(action, *before);
        if (before && action == OverlayAction::skip) {
            const bool costs = before->kind == BreakKind::eye && !audit_.skips().isDisabled();
            findings().expect("cost told before the skip",
                              environment_->penaltyEngine().previewPenalty(before->kind),
                              costs ? audit_.skips().costSec(now()) : 0);
        }
        const bool isDone = overlay().press(action);
        findings().expect("press answered", isDone, isPossible);
        findings().expect("break still on screen", session().has_value(), before && !isPossible);
        check();
    }
    void skipGently() {
        note("skip gently");
        overlay().close(CloseReason::skippedGently);
        check();
    }

    void startNow(BreakKind kind) {
        note("start now " + std::string(nameOf(kind)));
        const auto before = session();
        presence_.setStartingNow(true);
        engine().startNow(kind);
        presence_.setStartingNow(false);
        if (before) {
            findings().expect("break on screen stays", session() == before, true);
        } else {
            findings().expect("break started", session() && session()->kind == kind, true);
            if (kind == BreakKind::eye) {
                audit_.countdowns().takeMerge();
            }
        }
        check();
    }

    // Before the break, as from a card that announces it.
    void postponeAhead(BreakKind kind) {
        note("postpone ahead " + std::string(nameOf(kind)));
        const bool isFree = !session() && !audit_.countdowns().heldKind();
        const bool isGranted = isFree && mayPostpone();
        const TimerState before = *engine().state();
        findings().expect("postponed", engine().postpone(kind), isGranted);
        TimerState after = before;
        if (isGranted) {
            (kind == BreakKind::eye ? after.eye : after.body).remainingSec += 300;
            audit_.add({{}, now(), now(), kind, {}, 0, 0}, BreakLogEntry::Outcome::postponed);
        }
        if (isFree && !isGranted) {
            findings().count("no postpone left");
        }
        findings().expect("countdowns after it", *engine().state() == after, true);
        check();
    }

    void pause(std::int64_t minutes) {
        note("pause " + std::to_string(minutes));
        presence_.pause(now() + wallSec(minutes * 60));
        engine().pauseByUser(PauseDuration::forMinutes(minutes));
        stopped();
    }
    void resume() {
        note("resume");
        presence_.endUserPause();
        engine().endPause(PauseReason::user);
        check();
    }

    void change(const std::string& what, const std::function<void(SettingsModel&)>& change) {
        note(what);
        SettingsModel next = settings();
        change(next);
        presence_.change(next);
        const bool wasEnabled = settings().ostrelEnabled;
        environment_->settingsStore().update(change);
        audit_.skips().setDisabled(settings().disableSkipPenalty);
        if (wasEnabled && !settings().ostrelEnabled) {
            stopped();
        }
        check();
    }

    void applyPreset(const PresetDefinition& preset) {
        note("preset " + preset.id);
        engine().applyPreset(preset);
        presence_.change(settings());
        audit_.skips().emptyPool();
        audit_.countdowns().takeMerge();
        expectRestarted();
        check();
    }

    void sleep(std::int64_t seconds) {
        note("sleep " + std::to_string(seconds));
        platform_.systemEvents.willSleep.send();
        check();
        platform_.runLoop.shiftWallClock(wallSec(seconds));
        sleptFor_ += runLoopSec(static_cast<double>(seconds));
        presence_.lookAtClock();
        if (seconds > 3600) {
            audit_.countdowns().takeMerge();
        }
        platform_.systemEvents.didWake.send();
        platform_.runLoop.runOverdueWallTimers();
        if (seconds > 3600) {
            audit_.skips().emptyPool();
            expectRestarted();
        }
        check();
    }

    void relaunch(double gapSec) {
        note("relaunch after " + Json(gapSec).dump());
        environment_->quit();
        findings().expect("break on screen after quitting", session().has_value(), false);
        check();
        audit_.stopWatching();
        environment_.reset();
        platform_.runLoop.shiftWallClock(WallClock::duration{gapSec});
        launch();
    }

    [[nodiscard]] TimerEngine& engine() { return environment_->timerEngine(); }
    [[nodiscard]] Findings& findings() { return audit_.findings(); }
    [[nodiscard]] VirtualPlatform& platform() { return platform_; }
    [[nodiscard]] PresenceAudit& presence() { return presence_; }
    // Also while it slept.
    [[nodiscard]] RunLoopClock::duration passed() const {
        return runLoopNow().time_since_epoch() + sleptFor_;
    }
    void note(const std::string& what) { findings().note(what); }
    void check() {
        presence_.settle();
        audit_.check();
        presence_.check();
    }

  private:
    // Half a second off the ticks, so that whatever is done next is in no doubt about its order.
    // The polls are armed before the audit begins, so that it finds what they have made of things.
    void launch() {
        presence_.willLaunch();
        environment_ = std::make_unique<AppEnvironment>(platform_.platform(makeUuid_));
        static_cast<void>(environment_->idleDetector());
        audit_.countdowns().beforeLaunch();
        environment_->launch();
        audit_.watch(*environment_);
        presence_.didLaunch(*environment_);
        expectRestarted();
        check();
        if (isPaused()) {
            findings().count("pause kept at launch");
        }
        runFor(0.5);
    }
    [[nodiscard]] bool mayPostpone() {
        return environment_->postponeService().remainingPostpones() > 0;
    }
    [[nodiscard]] OverlayManager& overlay() { return environment_->overlayManager(); }

    void runFor(double seconds) {
        platform_.runLoop.runUpTo(platform_.runLoop.now() + runLoopSec(seconds));
        check();
    }

    [[nodiscard]] bool isEnabled(OverlayAction action, const ActiveOverlaySession& session) {
        return action == OverlayAction::done       ? session.remainingSec == 0
               : action == OverlayAction::postpone ? mayPostpone()
                                                   : true;
    }
    // Nothing stays on the screen.
    void stopped() {
        findings().expect("break on screen after stopping", session().has_value(), false);
        check();
    }
    void expectRestarted() {
        const TimerState& timers = *engine().state();
        findings().expect("eye countdown", timers.eye.remainingSec,
                          engine().activeIntervalSec(BreakKind::eye));
        findings().expect("body countdown", timers.body.remainingSec,
                          engine().activeIntervalSec(BreakKind::body));
    }

    MakeUuid makeUuid_ = seededUuids(1);
    VirtualPlatform platform_;
    ScheduleAudit audit_;
    std::unique_ptr<AppEnvironment> environment_;
    RunLoopClock::duration sleptFor_{0};
    PresenceAudit presence_;
};

}  // namespace ostrel
