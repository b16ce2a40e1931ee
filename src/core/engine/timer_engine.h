#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

#include "base/clock.h"
#include "base/published.h"
#include "base/signal.h"
#include "base/uuid.h"
#include "core/engine/break_timer.h"
#include "core/engine/engine_ports.h"
#include "core/engine/hold_end.h"
#include "core/engine/pause_duration.h"
#include "core/engine/pause_forgotten_reminder.h"
#include "core/settings/preset_catalog.h"
#include "core/settings/session_state_store.h"
#include "platform/api/calendar.h"
#include "platform/api/run_loop.h"

namespace ostrel {

class SettingsStore;

// The break scheduler: counts both cadences down once a second, folds an eye break into a body
// break that is about to come, holds a due break back while a meeting or a video runs, and asks for
// the break to be opened.
//
// A request restarts the countdown at once: a cycle counts from when its break was due, not from
// its end. Of the penalty only the break that is put on the screen takes anything: a break that is
// held, dropped or cancelled leaves the pool as it is.
class TimerEngine {
  public:
    static constexpr std::int64_t kMergeSlackSec = 300;
    static constexpr std::int64_t kUndoneMergeCapSec = 60;
    static constexpr std::int64_t kHousekeepingTicks = 60;
    static constexpr std::int64_t kLeastHoldSec = 60;
    static constexpr std::int64_t kLongAbsenceSec = 3600;
    static constexpr std::int64_t kLongestCreditedAwaySec = 43'200;
    static constexpr std::int64_t kHoldRecheckSec = 30;

    enum class Ticking { automatic, manual };

    // What the engine works with. All of it outlives the engine.
    struct Services {
        SettingsStore& settingsStore;
        SessionStateStore& sessionStateStore;
        const Calendar& calendar;
        RunLoop& runLoop;
        NowFunction now;
        MakeUuid makeUuid;
        EngineCollaborators collaborators;
    };

    TimerEngine(Services services, Ticking ticking);
    TimerEngine(const TimerEngine&) = delete;
    TimerEngine& operator=(const TimerEngine&) = delete;
    ~TimerEngine();

    [[nodiscard]] const Published<TimerState>& state() const { return state_; }
    [[nodiscard]] bool eyeMergedIntoBody() const { return eyeMergedIntoBody_; }
    // Whether, as things stand, the next eye break will be part of the body break.
    [[nodiscard]] bool eyeJoinsBody() const { return eyeMergedIntoBody_ || eyeWillMerge(); }
    [[nodiscard]] bool isDeferring() const { return deferralStartedAt_.has_value(); }
    // Which break is held back.
    [[nodiscard]] std::optional<BreakKind> heldKind() const { return heldKind_; }
    [[nodiscard]] std::int64_t activeIntervalSec(BreakKind kind) const;

    // Answers whether a break is on screen; without an answer, none is.
    void setIsOverlayPresented(std::function<bool()> isOverlayPresented);

    // At launch: both countdowns start anew from the preset, a restored pause goes on, and ticking
    // starts.
    void configure(const PresetDefinition& preset);

    // Once a second on the run loop, when the engine ticks automatically. A second call does
    // nothing.
    void startTicking();
    void tick();

    // Opens a break at once, whatever is held or paused. While one is on screen it does nothing.
    void startNow(BreakKind kind);

    // Puts a break off that is not on screen yet. False, and nothing changed, while a break is on
    // screen or held, or when no postpone is left (which is told).
    bool postpone(BreakKind kind);

    // From the overlay: the break on screen was postponed and is back after the postpone's length.
    void postponePresented(BreakKind kind);

    // From the overlay: a body break did not take place, so that the eye break folded into it has
    // to follow soon.
    void bodyBreakNotCompleted();

    // From the overlay: a body break was completed. Returns whether an eye break was folded into
    // it; asking takes it, so that no eye break is credited twice.
    [[nodiscard]] bool takeMergedEyeBreak();

    void markUserIdle();
    // Ends the hold of both countdowns and credits an absence that was long enough as a break.
    void markUserReturned(std::int64_t awaySec);

    // At wake. More than kLongAbsenceSec restarts both countdowns.
    void resumeAfterLongAbsence(std::int64_t elapsedSec);

    void applyPreset(const PresetDefinition& preset);

    // All settings at once. A changed interval restarts its own countdown and no other, a changed
    // duration none; penalties stay.
    void applySettings(const SettingsModel& settings);

    // Likewise with the user's own four values, under PresetCatalog::kOwnID.
    void applyOwnTiming(PresetDefinition timing);

    // A reason of the user goes on until `until`, or for ever without it.
    void pause(PauseReason reason, std::optional<WallTime> until = std::nullopt);
    void pauseByUser(PauseDuration duration);

    enum class Countdowns { keep, restart };
    // The schedule goes on once no reason is left.
    void endPause(PauseReason reason, Countdowns countdowns = Countdowns::keep);
    void endAllPauses();
    // Ends every pause, or begins an indefinite one of the user.
    void togglePause();

    Signal<std::int64_t> shouldOpenEyeBreak;   // carries the penalty seconds to add
    Signal<std::int64_t> shouldOpenBodyBreak;  // always carries 0
    Signal<> shouldCloseOverlayForPause;
    Signal<BreakKind> holdBegan;
    Signal<BreakKind, HoldEnd> holdEnded;
    Signal<BreakKind> absenceCredited;  // an absence counted as that break

  private:
    struct CycleFlags {
        bool didShowPreBreakToast = false;
        bool didScheduleBreakSoon = false;
    };

    [[nodiscard]] const BreakTimer& timer(BreakKind kind) const;
    [[nodiscard]] CycleFlags& flags(BreakKind kind);
    void setRemaining(BreakKind kind, std::int64_t remainingSec);
    void setRunning(bool isRunning);
    void setAway(bool isAway);

    void stepEye();
    void stepBody();
    void countDown(BreakKind kind);
    [[nodiscard]] bool eyeWillMerge() const;
    void foldEyeIntoBody(std::int64_t secondsUntilBody);
    void undoMerge();
    void resetTimer(BreakKind kind);
    void restartCountdowns();
    void changeInterval(BreakKind kind, std::int64_t intervalSec);
    void clearPenalties();
    void clearCycleFlags();
    void warn(BreakKind kind);
    [[nodiscard]] bool isInWarningWindow(BreakKind kind, std::int64_t leadSec) const;

    void requestBreak(BreakKind kind);
    void openBreak(BreakKind kind);
    void sendOpen(BreakKind kind);
    [[nodiscard]] bool hasReasonToHold() const;
    [[nodiscard]] bool hasHoldRunOut() const;
    void beginHold(BreakKind kind);
    void takeOverHold();
    void scheduleHoldCheck();
    void checkHold();
    void dropHeldBreak();
    void endHold(HoldEnd how);
    void cancelHold();

    void creditAway(std::int64_t awaySec);
    void resume(Countdowns countdowns);
    void restorePause();
    void armUserPauseEnd();
    void stopSchedule();

    void logEntry(BreakKind kind, BreakLogEntry::Outcome outcome, WallTime startedAt,
                  WallTime endedAt);
    void showToast(EngineToasts::Message message, std::optional<std::int64_t> argument = {},
                   const EngineToasts::Handlers& handlers = {});
    void dismissToast();
    void withdrawWarnings();
    void withdrawBreakSoon();
    [[nodiscard]] bool isOverlayPresented() const;

    Services services_;
    const Ticking ticking_;
    std::function<bool()> isOverlayPresented_;
    Published<TimerState> state_;
    std::int64_t activeEyeIntervalSec_ = 0;
    std::int64_t activeBodyIntervalSec_ = 0;
    CycleFlags eyeFlags_;
    CycleFlags bodyFlags_;
    bool eyeMergedIntoBody_ = false;
    bool eyeWaitsBehindHold_ = false;
    std::optional<BreakKind> heldKind_;
    std::optional<WallTime> deferralStartedAt_;
    std::uint64_t deferralGeneration_ = 0;
    std::int64_t ticksSinceLastPoolHousekeeping_ = 0;
    bool wasEnabled_;

    std::shared_ptr<const int> alive_ = std::make_shared<const int>(0);
    Timer tickTimer_;
    Timer holdCheckTimer_;
    Timer userPauseTimer_;
    PauseForgottenReminder pauseForgotten_;
    Subscription settingsChanges_;
    Subscription penaltyPoolChanges_;
};

}  // namespace ostrel
