#pragma once

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "support/countdown_audit.h"
#include "support/skip_model.h"

namespace ostrel {

// Watches an environment and holds all that it charges, counts and records against models of its
// own. From the environment it takes only what the schedule does: breaks open and close, holds
// begin and end, seconds go by. What follows from that it works out itself.
class ScheduleAudit {
  public:
    ScheduleAudit(VirtualPlatform& platform, Counts& counts)
        : platform_(platform),
          findings_(platform, counts),
          countdowns_(platform, findings_),
          skips_(counts) {
        watching_.push_back(countdowns_.ticked.subscribe([this] { skips_.tick(now()); }));
        watching_.push_back(
            countdowns_.dropped.subscribe([this](BreakKind kind, WallTime heldSince) {
                add({{}, heldSince, now(), kind, {}, 0, 0}, BreakLogEntry::Outcome::deferred);
            }));
        watching_.push_back(
            platform_.attentionRequested.subscribe([this] { ++attentionRequests_; }));
    }
    ScheduleAudit(const ScheduleAudit&) = delete;
    ScheduleAudit& operator=(const ScheduleAudit&) = delete;

    [[nodiscard]] Findings& findings() { return findings_; }
    [[nodiscard]] CountdownAudit& countdowns() { return countdowns_; }
    [[nodiscard]] SkipModel& skips() { return skips_; }
    [[nodiscard]] bool isBreakOpen() const { return open_.has_value(); }

    void watch(AppEnvironment& environment) {
        environment_ = &environment;
        countdowns_.watch(environment);
        skips_.launch(now());
        comparedEntries_ = 0;
        OverlayManager& overlay = environment.overlayManager();
        watchingOverlay_.push_back(overlay.didPresent.subscribe([this] { noteOpened(); }));
        watchingOverlay_.push_back(overlay.didClose.subscribe(
            [this](BreakKind kind, CloseReason reason) { noteClosed(kind, reason); }));
        watchingOverlay_.push_back(overlay.activeSession().onChange([this](const auto& session) {
            findings_.expect("break below zero", session && session->remainingSec < 0, false);
        }));
    }
    void stopWatching() {
        watchingOverlay_.clear();
        countdowns_.stopWatching();
    }

    enum class Counted { yes, no };
    // What the history has to say of a break; its id is the log's affair.
    void add(BreakLogEntry entry, BreakLogEntry::Outcome outcome, Counted counted = Counted::yes) {
        entry.outcome = outcome;
        records_.push_back({entry, platform_.calendar.dayKeyOf(entry.endedAt), counted});
    }

    // After every step of the schedule and everything that is done to it.
    void check() {
        const TimerState& timers = *environment_->timerEngine().state();
        findings_.expect("penalty pool", *environment_->penaltyEngine().unconsumedPenaltySec(),
                         skips_.poolSec());
        findings_.expect("penalty of the eye countdown", timers.eye.pendingPenaltySec,
                         skips_.poolSec());
        findings_.expect("penalty of the body countdown", timers.body.pendingPenaltySec, 0);
        findings_.expect("requests for attention", attentionRequests_, attentionsDue_);
        findings_.expect("break on screen",
                         environment_->overlayManager().activeSession()->has_value(),
                         open_.has_value());
        countdowns_.check();
        checkHistory();
        checkCounts();
    }

  private:
    using Outcome = BreakLogEntry::Outcome;
    struct Recorded {
        BreakLogEntry entry;
        std::string day;
        Counted counted;
    };

    [[nodiscard]] WallTime now() const { return platform_.runLoop.wallNow(); }

    void noteOpened() {
        const OverlayManager& overlay = environment_->overlayManager();
        const ActiveOverlaySession& session = **overlay.activeSession();
        const SettingsModel& settings = *environment_->settingsStore().settings();
        const BreakKind kind = session.kind;
        findings_.note(std::string(nameOf(kind)) + " opened +" +
                       std::to_string(session.penaltySec));
        const std::int64_t penaltySec = skips_.open(kind);
        const std::int64_t totalSec =
            penaltySec +
            (kind == BreakKind::eye ? settings.eyeBreakDurationSec : settings.bodyBreakDurationSec);
        findings_.expect("another break on screen", open_.has_value(), false);
        findings_.expect("penalty of the break", session.penaltySec, penaltySec);
        findings_.expect("seconds of the break", session.remainingSec, totalSec);
        findings_.expect("recent body skips", *overlay.recentSkipCount(),
                         skips_.countWithinHour(BreakKind::body, now()));
        open_ = BreakLogEntry{{}, now(), {}, kind, {}, penaltySec, totalSec};
        countdowns_.opened(kind);
    }

    void noteClosed(BreakKind kind, CloseReason reason) {
        findings_.noteAndCount(std::string(nameOf(kind)) + " closed " +
                               std::string(nameOf(reason)));
        findings_.expect("break that closes", open_ && open_->kind == kind, true);
        BreakLogEntry entry = std::exchange(open_, std::nullopt).value_or(BreakLogEntry{});
        entry.endedAt = now();
        countdowns_.closed();
        switch (reason) {
            case CloseReason::skipped:
                add(entry, Outcome::skipped, skips_.isDisabled() ? Counted::no : Counted::yes);
                attentionsDue_ += skips_.skip(kind, now()) ? 1 : 0;
                break;
            case CloseReason::skippedGently:
                add(entry, Outcome::skipped);
                break;
            case CloseReason::done:
            case CloseReason::autoFade:
                add(entry, reason == CloseReason::done ? Outcome::completed : Outcome::autoFadeOut);
                creditMerged(entry);
                return;
            case CloseReason::postponed:
                add(entry, Outcome::postponed);
                findings_.expect("seconds until it is back", countdowns_.remainingSec(kind), 300);
                return;
            case CloseReason::forcedBySleep:
            case CloseReason::forcedByPause:
                break;
        }
        if (kind == BreakKind::body) {
            countdowns_.undoMerge();
        }
    }

    void creditMerged(BreakLogEntry body) {
        if (body.kind == BreakKind::body && countdowns_.takeMerge()) {
            findings_.count("merge credited");
            body.kind = BreakKind::eye;
            body.penaltyAppliedSec = 0;
            add(body, Outcome::completed);
        }
    }

    // It holds what it has to and nothing else.
    void checkHistory() {
        const auto& entries = *environment_->breakLog().entries();
        findings_.expect("entries in the history", entries.size(), records_.size());
        for (; comparedEntries_ < std::min(entries.size(), records_.size()); ++comparedEntries_) {
            BreakLogEntry entry = entries[comparedEntries_];
            entry.id = {};
            findings_.expect("entry of the history", entry, records_[comparedEntries_].entry);
        }
    }

    void checkCounts() {
        const DailyCounterModel& counts = *environment_->dailyCounter().model();
        if (counts != comparedCounts_ || countedEntries_ != records_.size()) {
            findings_.expect("counts of the day", counts, countsOf(counts.dateKey));
            comparedCounts_ = counts;
            countedEntries_ = records_.size();
        }
        // The counter may take a second to hear of midnight.
        if (now() - platform_.calendar.startOfDay(now()) >= wallSec(1)) {
            findings_.expect("day that is counted", counts.dateKey,
                             platform_.calendar.dayKeyOf(now()));
        }
    }

    [[nodiscard]] DailyCounterModel countsOf(const std::string& day) const {
        DailyCounterModel counts;
        counts.dateKey = day;
        for (const auto& [entry, itsDay, counted] : records_) {
            if (itsDay != day || counted == Counted::no) {
                continue;
            }
            const bool isEye = entry.kind == BreakKind::eye;
            counts.eyeBreaksCompleted += entry.isTaken() && isEye ? 1 : 0;
            counts.bodyBreaksCompleted += entry.isTaken() && !isEye ? 1 : 0;
            counts.skipsToday += entry.outcome == Outcome::skipped ? 1 : 0;
            counts.postponesToday += entry.outcome == Outcome::postponed ? 1 : 0;
        }
        return counts;
    }

    VirtualPlatform& platform_;
    Findings findings_;
    CountdownAudit countdowns_;
    SkipModel skips_;
    std::vector<Recorded> records_;
    AppEnvironment* environment_ = nullptr;
    std::optional<BreakLogEntry> open_;  // the break on screen, as far as it can be told
    int attentionRequests_ = 0;
    int attentionsDue_ = 0;
    std::size_t comparedEntries_ = 0;
    std::size_t countedEntries_ = 0;
    DailyCounterModel comparedCounts_;

    std::vector<Subscription> watching_;
    std::vector<Subscription> watchingOverlay_;
};

}  // namespace ostrel
