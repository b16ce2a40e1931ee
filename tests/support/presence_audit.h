#pragma once

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "presence/work_hours.h"
#include "support/schedule_audit.h"

namespace ostrel {

// Works out what pauses the schedule and what holds a break from what the user and the computer do
// alone, and finds fault with breaks that come all the same, or do not come.
class PresenceAudit {
  public:
    PresenceAudit(VirtualPlatform& platform, ScheduleAudit& audit, SettingsModel settings)
        : platform_(platform), audit_(audit), settings_(std::move(settings)) {}

    [[nodiscard]] bool isPaused() const { return !reasons_.empty(); }
    [[nodiscard]] bool isFocusOn() const { return isFocusOn_; }
    [[nodiscard]] bool isPauseEnding() const { return until_ && *until_ <= now() + kTolerance; }

    // Armed before everything else, so that each second is looked at before it is lived.
    void willLaunch() {
        watching_.clear();
        secondsSinceLaunch_ = 0;
        polls_ = platform_.runLoop.repeat({}, std::chrono::seconds(1), [this] { poll(); });
        constexpr std::int64_t kDaySec = 86'400;
        if (!until_ || *until_ <= now() || *until_ > now() + wallSec(kDaySec)) {
            endUserPause();
        }
        reasons_.erase(PauseReason::focus);
        reasons_.erase(PauseReason::schedule);
        detectsIdle_ = settings_.detectUserIdle;
        isAway_ = isFilm_ = isCall_ = isCallSure_ = isFocusOn_ = false;
        longestIdleSec_ = 0;
        isInside_ = true;
        lookAtClock();
    }
    void didLaunch(AppEnvironment& environment) {
        environment_ = &environment;
        const SessionStateStore& session = environment.sessionStateStore();
        seenReasons_ = session.current()->pauseReasons;
        watching_.push_back(session.current().onChange(
            [this](const SessionStateModel& model) { noteReasons(model.pauseReasons); }));
        watching_.push_back(
            environment.overlayManager().didPresent.subscribe([this] { checkOpened(); }));
        watching_.push_back(engine().holdBegan.subscribe([this](BreakKind /*kind*/) {
            inTheWayAt_ = platform_.runLoop.now();
            findings().count(isFilmInTheWay() ? "hold for a film" : "hold for a call");
            findings().expect("reason to hold", !isCallSure_ || isCall_ || isFilmInTheWay(), true);
        }));
        watching_.push_back(engine().holdEnded.subscribe([this](BreakKind kind, HoldEnd how) {
            if (how == HoldEnd::opened) {
                released_ = kind;
            } else if (how == HoldEnd::dropped) {
                findings().expect("reason to drop", !isCallSure_ || isCall_ || isFilmInTheWay(),
                                  true);
            }
        }));
        watching_.push_back(
            audit_.countdowns().tickBegins.subscribe([this] { checkTickBegins(); }));
    }

    void change(const SettingsModel& settings) {
        const SettingsModel before = std::exchange(settings_, settings);
        if (WindowShape::of(before) != WindowShape::of(settings)) {
            lookAtClock();
        }
        if (before.pauseDuringDND != settings.pauseDuringDND) {
            applyFocus();
        }
        surroundingsChanged();
    }
    void surroundingsChanged() { isCallSure_ = isCallSure_ && isCall_ == isCallInFront(); }
    void announce(bool isOn) {
        if (std::exchange(isFocusOn_, isOn) != isOn) {
            applyFocus();
        }
    }
    void pause(std::optional<WallTime> until) {
        reasons_.insert(PauseReason::user);
        until_ = until;
    }
    void endUserPause() {
        reasons_.erase(PauseReason::user);
        until_.reset();
    }
    void endAllPauses() {
        reasons_.clear();
        until_.reset();
    }
    void setStartingNow(bool isStartingNow) { isStartingNow_ = isStartingNow; }

    // The clock, the zone or the hours may have changed, or the user turned to the program.
    void lookAtClock() {
        const bool wasInside = std::exchange(isInside_, isWithinHours());
        if (isInside_) {
            const bool wasHeld = reasons_.erase(PauseReason::schedule) > 0;
            if (!wasInside && !wasHeld && reasons_.empty()) {
                noteRestart();
            }
            return;
        }
        reasons_.insert(PauseReason::schedule);
    }

    // What time alone changes.
    void settle() {
        if (until_ && *until_ < now() - kTolerance) {
            findings().count("timed pause ended");
            endUserPause();
        }
        // Every new day is a reason to look.
        const std::string day = platform_.calendar.dayKeyOf(now());
        const bool isMidnight = std::exchange(day_, day) != day;
        if (isWithinHours() != isInside_ || isMidnight) {
            lookAtClock();
            flippedAt_ = platform_.runLoop.now();
        }
    }
    void check() {
        for (const BreakKind kind : {BreakKind::eye, BreakKind::body}) {
            const std::int64_t goneSec =
                engine().activeIntervalSec(kind) - audit_.countdowns().remainingSec(kind);
            findings().expect("countdown new", hasRestarted_ && goneSec != 0 && goneSec != 1,
                              false);
        }
        hasRestarted_ = false;
        if (isCallSure_) {
            findings().expect("call", environment_->meetingWatcher()->isMeetingActive(), isCall_);
        }
        findings().expect("film", environment_->videoPlaybackDetector().isVideoPlaying(), isFilm_);
        findings().expect("idle", *environment_->idleDetector().isIdle(), isAway_);
        findings().expect("Do Not Disturb",
                          *environment_->focusFilterWatcher()->behavior() == FocusBehavior::on,
                          isFocusOn_);
        findings().expect("breaks credited", environment_->presenceTally().totals(60).credited,
                          credited_);
        checkHolds();
        checkPauses();
    }

  private:
    static constexpr WallClock::duration kTolerance{0.001};

    [[nodiscard]] WallTime now() const { return platform_.runLoop.wallNow(); }
    [[nodiscard]] Findings& findings() const { return audit_.findings(); }
    [[nodiscard]] TimerEngine& engine() const { return environment_->timerEngine(); }

    // The rule itself has a model of its own, minute by minute.
    [[nodiscard]] bool isWithinHours() const {
        return isWithin(now(), WindowShape::of(settings_), platform_.calendar);
    }
    [[nodiscard]] bool isCallInFront() const {
        const auto front = platform_.frontmost.current();
        return front && front->bundleIdentifier &&
               std::ranges::count(settings_.deferAppBundleIDs, *front->bundleIdentifier) > 0;
    }
    [[nodiscard]] bool isFilmInFront() const {
        const auto front = platform_.frontmost.current();
        const auto windows = platform_.windows.onScreen();
        const auto assertions = platform_.assertions.byProcess();
        if (!front || !assertions->contains(front->processIdentifier)) {
            return false;
        }
        const bool covers = std::ranges::any_of(*windows, [&](const auto& window) {
            return window.processIdentifier == front->processIdentifier &&
                   std::ranges::any_of(platform_.displays.current(), [&](const auto& display) {
                       return window.width.value_or(0) * 100 >= display.frame.width * 95 &&
                              *window.height * 100 >= display.frame.height * 95;
                   });
        });
        const auto& types = assertions->at(front->processIdentifier);
        return covers && (std::ranges::count(types, "PreventUserIdleDisplaySleep") > 0 ||
                          std::ranges::count(types, "NoDisplaySleepAssertion") > 0);
    }
    [[nodiscard]] bool isFilmInTheWay() const {
        return isFilm_ && settings_.delayBreakOnFullscreenVideo;
    }

    void applyFocus() {
        if (settings_.pauseDuringDND && isFocusOn_) {
            reasons_.insert(PauseReason::focus);
        } else {
            reasons_.erase(PauseReason::focus);
        }
    }
    void poll() {
        eyeSec_ = engine().state()->eye.remainingSec;
        bodySec_ = engine().state()->body.remainingSec;
        if (secondsSinceLaunch_ % 5 == 0) {
            isCall_ = isCallInFront();
            isCallSure_ = true;
        }
        if (secondsSinceLaunch_ % 10 == 0) {
            isFilm_ = isFilmInFront();
        }
        if (secondsSinceLaunch_ % 30 == 0 && secondsSinceLaunch_ > 0 && detectsIdle_) {
            sampleIdle();
        }
        ++secondsSinceLaunch_;
    }
    void sampleIdle() {
        if (!settings_.detectUserIdle) {
            if (isAway_) {
                comeBack(0);
            }
            return;
        }
        if (settings_.detectVideoPlayback && isFilm_) {
            findings().count("sample during a film");
            return;
        }
        const double idleSec = *platform_.inputIdle.secondsSinceLastInput();
        if (idleSec >= 30 && idleSec >= static_cast<double>(settings_.idleThresholdSec)) {
            isAway_ = true;
            longestIdleSec_ = std::max(longestIdleSec_, idleSec);
        } else if (isAway_) {
            comeBack(std::lround(longestIdleSec_));
        }
    }
    void comeBack(std::int64_t awaySec) {
        isAway_ = false;
        longestIdleSec_ = 0;
        constexpr std::int64_t kLongestSec = 43'200;
        if (!settings_.creditAwayAsBreak || awaySec <= 0 || awaySec > kLongestSec ||
            audit_.isBreakOpen()) {
            findings().count("return without credit");
            return;
        }
        if (awaySec >= settings_.eyeBreakDurationSec) {
            findings().count("eye break credited");
            ++credited_;
            eyeSec_ = engine().activeIntervalSec(BreakKind::eye);
        }
        if (awaySec >= settings_.bodyBreakDurationSec) {
            findings().count("body break credited");
            ++credited_;
            bodySec_ = engine().activeIntervalSec(BreakKind::body);
            audit_.countdowns().takeMerge();
        }
    }
    void checkTickBegins() {
        const TimerState& timers = *engine().state();
        findings().expect("eye countdown after the polls", timers.eye.remainingSec, eyeSec_);
        findings().expect("body countdown after the polls", timers.body.remainingSec, bodySec_);
        findings().expect("eye countdown away", timers.eye.isAway, isAway_);
        findings().expect("body countdown away", timers.body.isAway, isAway_);
        audit_.countdowns().setAway(isAway_);
    }
    // Unless the user asked for it, a break comes only where nothing is in its way.
    void checkOpened() {
        const auto released = std::exchange(released_, std::nullopt);
        isStartedByUser_ = isStartingNow_;
        if (isStartingNow_) {
            findings().count(isPaused() ? "started in a pause" : "break started");
            return;
        }
        settle();
        const BreakKind kind = (*environment_->overlayManager().activeSession())->kind;
        findings().expect("break in a pause", isPaused(), false);
        findings().expect("break while off", settings_.ostrelEnabled, true);
        findings().expect("break in a call", isCallSure_ && isCall_, false);
        findings().expect("break in a film", isFilmInTheWay(), false);
        findings().expect("break while away", isAway_ && released != kind, false);
    }
    // A cause that is over is found out at the next look.
    void checkHolds() {
        constexpr std::chrono::seconds kRecheck(30);
        const RunLoopTime present = platform_.runLoop.now();
        if (!audit_.countdowns().heldKind() || isCallInFront() || isFilmInTheWay()) {
            inTheWayAt_ = present;
        }
        findings().expect("held for nothing", present - inTheWayAt_ > kRecheck, false);
    }
    // The hours may be looked at a second late.
    void checkPauses() {
        const SessionStateModel& session = *environment_->sessionStateStore().current();
        if (isPauseEnding() || platform_.runLoop.now() - flippedAt_ < std::chrono::seconds(2)) {
            return;
        }
        findings().expect("reasons to pause", session.pauseReasons, reasons_);
        findings().expect("end of the pause", session.userPauseUntil == until_, true);
        findings().expect("within hours", *environment_->workHoursGate().isWithinWorkHours(),
                          isInside_);
        findings().expect("running",
                          engine().state()->eye.isRunning && engine().state()->body.isRunning,
                          !isPaused());
        findings().expect("break in a pause",
                          audit_.isBreakOpen() && isPaused() && !isStartedByUser_, false);
    }
    // Work that begins starts both countdowns anew, if nothing else pauses.
    void noteReasons(const std::set<PauseReason>& reasons) {
        settle();
        const auto before = std::exchange(seenReasons_, reasons);
        if (before.contains(PauseReason::schedule) && reasons.empty() && isInside_) {
            noteRestart();
        }
    }
    void noteRestart() {
        findings().count("work began");
        audit_.countdowns().takeMerge();
        hasRestarted_ = true;
    }

    VirtualPlatform& platform_;
    ScheduleAudit& audit_;
    SettingsModel settings_;
    AppEnvironment* environment_ = nullptr;

    // What the polls come upon.
    std::int64_t secondsSinceLaunch_ = 0;
    bool isCall_ = false;
    bool isCallSure_ = false;  // nothing has changed since the last poll
    bool isFilm_ = false;
    bool detectsIdle_ = false;
    bool isAway_ = false;
    double longestIdleSec_ = 0;
    std::int64_t eyeSec_ = 0;
    std::int64_t bodySec_ = 0;
    std::int64_t credited_ = 0;
    RunLoopTime inTheWayAt_;  // when something last was

    // What pauses.
    std::set<PauseReason> reasons_;
    std::optional<WallTime> until_;
    bool isFocusOn_ = false;
    bool isInside_ = true;
    std::string day_;
    RunLoopTime flippedAt_{std::chrono::hours(-1)};

    // What the environment does.
    std::set<PauseReason> seenReasons_;
    bool hasRestarted_ = false;
    bool isStartingNow_ = false;
    bool isStartedByUser_ = false;
    std::optional<BreakKind> released_;  // from a hold, about to open
    Timer polls_;
    std::vector<Subscription> watching_;
};

}  // namespace ostrel
