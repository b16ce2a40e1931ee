#pragma once

#include <memory>
#include <vector>

#include "app/environment/platform.h"
#include "base/subscription.h"
#include "core/engine/timer_engine.h"
#include "core/settings/session_state_store.h"
#include "core/settings/settings_store.h"
#include "menubar/ostrel_notification_center.h"
#include "menubar/toast_dispatcher.h"
#include "overlay/chime_player.h"
#include "overlay/overlay_manager.h"
#include "presence/focus_filter_watcher.h"
#include "presence/hotkey_router.h"
#include "presence/idle_detector.h"
#include "presence/meeting_watcher.h"
#include "presence/video_playback_detector.h"
#include "presence/work_hours_gate.h"
#include "records/break_log.h"
#include "records/daily_counter.h"
#include "records/day_end_announcer.h"
#include "records/penalty_engine.h"
#include "records/penalty_ledger.h"
#include "records/postpone_quota.h"
#include "records/postpone_service.h"
#include "records/presence_tally.h"
#include "records/report_summary.h"
#include "records/streak_tracker.h"

namespace ostrel {

// Holds every service of the program, each made once on first use and handed its collaborators.
// Services never see the environment.
class AppEnvironment {
  public:
    explicit AppEnvironment(Platform platform);
    AppEnvironment(const AppEnvironment&) = delete;
    AppEnvironment& operator=(const AppEnvironment&) = delete;
    ~AppEnvironment();

    // Configures the engine from the active preset and starts the schedule.
    void launch();

    // Closes a break that is on screen as sleep does and notes the time. The environment is to be
    // destroyed then.
    void quit();

    [[nodiscard]] SettingsStore& settingsStore();
    [[nodiscard]] SessionStateStore& sessionStateStore();
    [[nodiscard]] BreakLog& breakLog();
    [[nodiscard]] DailyCounter& dailyCounter();
    [[nodiscard]] PenaltyLedger& penaltyLedger();
    [[nodiscard]] PenaltyEngine& penaltyEngine();
    [[nodiscard]] PostponeQuota& postponeQuota();
    [[nodiscard]] PostponeService& postponeService();
    [[nodiscard]] PresenceTally& presenceTally();
    [[nodiscard]] StreakTracker& streakTracker();
    [[nodiscard]] DayEndAnnouncer& dayEndAnnouncer();
    [[nodiscard]] ReportSummaryView& reportSummary();
    // Null where the system cannot tell what is in front.
    [[nodiscard]] MeetingWatcher* meetingWatcher();
    // Never plays where the system does not tell enough.
    [[nodiscard]] VideoPlaybackDetector& videoPlaybackDetector();
    [[nodiscard]] IdleDetector& idleDetector();
    // Null where the system announces nothing.
    [[nodiscard]] FocusFilterWatcher* focusFilterWatcher();
    [[nodiscard]] WorkHoursGate& workHoursGate();
    // Null where the system knows no global hotkeys.
    [[nodiscard]] HotkeyRouter* hotkeyRouter();
    [[nodiscard]] OstrelNotificationCenter& notificationCenter();
    [[nodiscard]] ToastDispatcher& toastDispatcher();
    [[nodiscard]] ChimePlayer& chimePlayer();
    [[nodiscard]] TimerEngine& timerEngine();
    [[nodiscard]] OverlayManager& overlayManager();

  private:
    [[nodiscard]] OstrelNotificationCenter::Answers answers();
    void countHoldsAndCredits();
    void watchPresence();
    void followFocusSetting();
    void noteSleep();
    void noteWake();

    Platform platform_;
    std::unique_ptr<SettingsStore> settingsStore_;
    std::unique_ptr<SessionStateStore> sessionStateStore_;
    std::unique_ptr<OstrelNotificationCenter> notificationCenter_;
    std::unique_ptr<ToastDispatcher> toastDispatcher_;
    std::unique_ptr<BreakLog> breakLog_;
    std::unique_ptr<DailyCounter> dailyCounter_;
    std::unique_ptr<PenaltyLedger> penaltyLedger_;
    std::unique_ptr<PenaltyEngine> penaltyEngine_;
    std::unique_ptr<PostponeQuota> postponeQuota_;
    std::unique_ptr<PostponeService> postponeService_;
    std::unique_ptr<PresenceTally> presenceTally_;
    std::unique_ptr<StreakTracker> streakTracker_;
    std::unique_ptr<DayEndAnnouncer> dayEndAnnouncer_;
    std::unique_ptr<ReportSummaryView> reportSummary_;
    std::unique_ptr<MeetingWatcher> meetingWatcher_;
    std::unique_ptr<ChimePlayer> chimePlayer_;
    std::unique_ptr<VideoPlaybackDetector> videoPlaybackDetector_;
    std::unique_ptr<TimerEngine> timerEngine_;
    std::unique_ptr<IdleDetector> idleDetector_;
    std::unique_ptr<FocusFilterWatcher> focusFilterWatcher_;
    std::unique_ptr<WorkHoursGate> workHoursGate_;
    std::unique_ptr<HotkeyRouter> hotkeyRouter_;
    std::unique_ptr<OverlayManager> overlayManager_;
    std::vector<Subscription> subscriptions_;
};

}  // namespace ostrel
