#pragma once

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "app/environment/app_environment.h"
#include "app/simulator/virtual_platform.h"
#include "support/findings.h"

namespace ostrel {

// Holds both countdowns against their rules, tick by tick: each second that counts takes one from
// each, and what falls due is opened, held, folded or waits. No break is lost.
class CountdownAudit {
  public:
    CountdownAudit(VirtualPlatform& platform, Findings& findings)
        : platform_(platform), findings_(findings) {}

    Signal<> tickBegins;                  // after the polls of that second
    Signal<> ticked;                      // a second of the schedule, neither paused nor off
    Signal<BreakKind, WallTime> dropped;  // a held break, and since when it was held

    [[nodiscard]] std::optional<BreakKind> heldKind() const { return held_; }
    [[nodiscard]] std::int64_t remainingSec(BreakKind kind) const {
        const TimerState& timers = *engine().state();
        return (kind == BreakKind::eye ? timers.eye : timers.body).remainingSec;
    }

    // Right before and right after a launch: of the timers in between the engine's tick alone
    // repeats every second, so that nothing else comes between the two looks at it.
    void beforeLaunch() {
        beforeTick_ = everySecond([this] { noteTickBegins(); });
    }
    void watch(AppEnvironment& environment) {
        environment_ = &environment;
        afterTick_ = everySecond([this] { checkTick(); });
        watching_.push_back(engine().state().onChange([this](const TimerState& timers) {
            findings_.expect("seconds left below zero",
                             timers.eye.remainingSec < 0 || timers.body.remainingSec < 0, false);
        }));
        watching_.push_back(
            engine().holdBegan.subscribe([this](BreakKind kind) { noteHoldBegan(kind); }));
        watching_.push_back(engine().holdEnded.subscribe(
            [this](BreakKind kind, HoldEnd how) { noteHoldEnded(kind, how); }));
    }
    void stopWatching() {
        watching_.clear();
        beforeTick_.cancel();
        afterTick_.cancel();
        held_.reset();
        isMerged_ = false;
        isAway_ = false;
    }

    // While the user is away no second counts.
    void setAway(bool isAway) { isAway_ = isAway; }

    void opened(BreakKind kind) {
        isOpen_ = true;
        openedInTick_ = kind;
    }
    void closed() { isOpen_ = false; }

    // The body break that an eye break was folded into does not take place.
    void undoMerge() { mustFollowSoon_ = std::exchange(isMerged_, false) || mustFollowSoon_; }
    // It was taken, or both countdowns started anew. Returns whether one was folded.
    bool takeMerge() { return std::exchange(isMerged_, false); }

    void check() {
        findings_.expect("eye break folded", engine().eyeMergedIntoBody(), isMerged_);
        findings_.expect("hold", engine().isDeferring(), held_.has_value());
        if (std::exchange(mustFollowSoon_, false)) {
            findings_.count("merge undone");
            findings_.expect("eye break within a minute", remainingSec(BreakKind::eye) <= 60, true);
        }
    }

  private:
    [[nodiscard]] WallTime now() const { return platform_.runLoop.wallNow(); }
    [[nodiscard]] TimerEngine& engine() const { return environment_->timerEngine(); }
    [[nodiscard]] const SettingsModel& settings() const {
        return *environment_->settingsStore().settings();
    }
    [[nodiscard]] Timer everySecond(TimerQueue::Callback callback) {
        using std::chrono::seconds;
        return platform_.runLoop.repeat(seconds(1), seconds(1), std::move(callback));
    }

    void noteHoldBegan(BreakKind kind) {
        findings_.note("hold of " + std::string(nameOf(kind)));
        held_ = kind;
        if (!foldedInTick_) {
            heldSince_ = now();
        }
    }
    void noteHoldEnded(BreakKind kind, HoldEnd how) {
        findings_.noteAndCount("hold of " + std::string(nameOf(kind)) + " " +
                               std::string(nameOf(how)));
        findings_.expect("break that was held", std::exchange(held_, std::nullopt) == kind, true);
        foldedInTick_ = foldedInTick_ || how == HoldEnd::folded;
        const bool isStopped =
            !settings().ostrelEnabled || environment_->sessionStateStore().isPaused();
        if (how == HoldEnd::cancelled && isStopped && kind == BreakKind::body) {
            undoMerge();
        }
        if (how == HoldEnd::dropped) {
            findings_.expect("dropped in time", hasHoldRunOut(), true);
            dropped.send(kind, heldSince_);
            if (kind == BreakKind::body) {
                undoMerge();
            }
        }
    }
    [[nodiscard]] bool hasHoldRunOut() const {
        return now() - heldSince_ >= wallSec(std::max<std::int64_t>(60, settings().maxDeferralSec));
    }

    void noteTickBegins() {
        before_ = *engine().state();
        openedInTick_.reset();
        foldedInTick_ = false;
        tickBegins.send();
    }

    void checkTick() {
        if (!settings().ostrelEnabled || environment_->sessionStateStore().isPaused()) {
            findings_.expect("countdowns at rest", *engine().state() == before_, true);
            return;
        }
        ticked.send();
        if (std::exchange(mustFollowSoon_, false)) {
            findings_.count("merge undone");
            before_.eye.remainingSec = std::min<std::int64_t>(before_.eye.remainingSec, 60);
        }
        // Whether a due break is folded is the engine's affair; here it only must not get lost.
        if (before_.eye.remainingSec <= 1 || foldedInTick_) {
            isMerged_ = isMerged_ || engine().eyeMergedIntoBody();
        }
        checkTimer(BreakKind::eye, before_.eye.remainingSec, isMerged_);
        checkTimer(BreakKind::body, before_.body.remainingSec, false);
        findings_.expect("hold past its end", held_ && hasHoldRunOut(), false);
    }

    void checkTimer(BreakKind kind, std::int64_t beforeSec, bool isFolded) {
        const bool isEye = kind == BreakKind::eye;
        const char* what = isEye ? "seconds until the eye break" : "seconds until the body break";
        const std::int64_t isSec = remainingSec(kind);
        if (isAway_) {
            findings_.expect(what, isSec, beforeSec);
        } else if (beforeSec > 1 && !(isEye && foldedInTick_)) {
            findings_.expect(what, isSec, beforeSec - 1);
        } else if (isSec == 0 && (isOpen_ || held_)) {
            findings_.count("due break waited");
        } else {
            findings_.expect(what, isSec, engine().activeIntervalSec(kind));
            findings_.expect("due break is seen to",
                             openedInTick_ == kind || held_ == kind || isFolded, true);
        }
    }

    VirtualPlatform& platform_;
    Findings& findings_;
    AppEnvironment* environment_ = nullptr;
    bool isOpen_ = false;
    bool isAway_ = false;
    std::optional<BreakKind> held_;
    WallTime heldSince_;
    bool isMerged_ = false;
    bool mustFollowSoon_ = false;
    TimerState before_;
    std::optional<BreakKind> openedInTick_;
    bool foldedInTick_ = false;

    Timer beforeTick_;
    Timer afterTick_;
    std::vector<Subscription> watching_;
};

}  // namespace ostrel
