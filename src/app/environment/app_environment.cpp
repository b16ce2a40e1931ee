#include "app/environment/app_environment.h"

#include <algorithm>
#include <utility>

#include "base/checked_seconds.h"

namespace ostrel {
namespace {

constexpr double kLongestSleepSec = 1e10;  // some centuries

// The service of a slot, made on first use.
template <class Service, class Make>
Service& filled(std::unique_ptr<Service>& slot, Make make) {
    if (!slot) {
        slot = make();
    }
    return *slot;
}

}  // namespace

AppEnvironment::AppEnvironment(Platform platform) : platform_(std::move(platform)) {}
AppEnvironment::~AppEnvironment() = default;

SettingsStore& AppEnvironment::settingsStore() {
    return filled(settingsStore_,
                  [this] { return std::make_unique<SettingsStore>(platform_.preferences); });
}

SessionStateStore& AppEnvironment::sessionStateStore() {
    return filled(sessionStateStore_, [this] {
        return std::make_unique<SessionStateStore>(platform_.preferences, platform_.now());
    });
}

BreakLog& AppEnvironment::breakLog() {
    return filled(breakLog_, [this] {
        return std::make_unique<BreakLog>(platform_.preferences, platform_.calendar, platform_.now);
    });
}

DailyCounter& AppEnvironment::dailyCounter() {
    return filled(dailyCounter_, [this] {
        return std::make_unique<DailyCounter>(
            DailyCounter::Services{platform_.preferences, platform_.calendar, platform_.runLoop,
                                   platform_.systemEvents, platform_.now});
    });
}

PenaltyLedger& AppEnvironment::penaltyLedger() {
    return filled(penaltyLedger_,
                  [this] { return std::make_unique<PenaltyLedger>(platform_.preferences); });
}

PenaltyEngine& AppEnvironment::penaltyEngine() {
    return filled(penaltyEngine_, [this] {
        return std::make_unique<PenaltyEngine>(PenaltyEngine::Services{
            platform_.now, penaltyLedger(), settingsStore(), dailyCounter(), &notificationCenter(),
            platform_.preferences, platform_.requestUserAttention});
    });
}

PostponeQuota& AppEnvironment::postponeQuota() {
    return filled(postponeQuota_, [this] {
        return std::make_unique<PostponeQuota>(platform_.preferences, platform_.now);
    });
}

PostponeService& AppEnvironment::postponeService() {
    return filled(postponeService_, [this] {
        return std::make_unique<PostponeService>(platform_.now, postponeQuota(), dailyCounter());
    });
}

PresenceTally& AppEnvironment::presenceTally() {
    return filled(presenceTally_, [this] {
        return std::make_unique<PresenceTally>(platform_.preferences, platform_.calendar,
                                               platform_.now);
    });
}

StreakTracker& AppEnvironment::streakTracker() {
    return filled(streakTracker_, [this] {
        return std::make_unique<StreakTracker>(
            StreakTracker::Services{platform_.preferences, settingsStore(), breakLog(),
                                    dailyCounter(), platform_.calendar, platform_.now});
    });
}

DayEndAnnouncer& AppEnvironment::dayEndAnnouncer() {
    return filled(dayEndAnnouncer_, [this] {
        return std::make_unique<DayEndAnnouncer>(
            DayEndAnnouncer::Services{platform_.preferences, settingsStore(), breakLog(),
                                      platform_.calendar, platform_.now, &notificationCenter()});
    });
}

ReportSummaryView& AppEnvironment::reportSummary() {
    return filled(reportSummary_, [this] {
        return std::make_unique<ReportSummaryView>(breakLog(), platform_.calendar, platform_.now);
    });
}

MeetingWatcher* AppEnvironment::meetingWatcher() {
    if (platform_.presence.frontmost == nullptr) {
        return nullptr;
    }
    return &filled(meetingWatcher_, [this] {
        return std::make_unique<MeetingWatcher>(MeetingWatcher::Services{
            settingsStore(), *platform_.presence.frontmost, platform_.runLoop});
    });
}

VideoPlaybackDetector& AppEnvironment::videoPlaybackDetector() {
    using Start = VideoPlaybackDetector::Start;
    return filled(videoPlaybackDetector_, [this] {
        const PresenceSources& from = platform_.presence;
        const bool canTell = from.frontmost && from.windows && from.assertions;
        return std::make_unique<VideoPlaybackDetector>(
            platform_.runLoop,
            canTell ? VideoPlaybackDetector::inspectorOf(
                          {*from.frontmost, *from.windows, platform_.displays, *from.assertions})
                    : [] { return false; },
            canTell ? Start::immediately : Start::later);
    });
}

IdleDetector& AppEnvironment::idleDetector() {
    return filled(idleDetector_, [this] {
        return std::make_unique<IdleDetector>(
            IdleDetector::Services{settingsStore(), videoPlaybackDetector(), platform_.inputIdle,
                                   platform_.runLoop, &timerEngine()},
            IdleDetector::Start::immediately);
    });
}

FocusFilterWatcher* AppEnvironment::focusFilterWatcher() {
    if (platform_.presence.announcements == nullptr) {
        return nullptr;
    }
    return &filled(focusFilterWatcher_, [this] {
        return std::make_unique<FocusFilterWatcher>(FocusFilterWatcher::Services{
            settingsStore(), *platform_.presence.announcements, &timerEngine()});
    });
}

WorkHoursGate& AppEnvironment::workHoursGate() {
    return filled(workHoursGate_, [this] {
        return std::make_unique<WorkHoursGate>(
            WorkHoursGate::Services{settingsStore(), platform_.calendar, platform_.systemEvents,
                                    platform_.runLoop, platform_.now, &timerEngine()},
            WorkHoursGate::Start::later);
    });
}

HotkeyRouter* AppEnvironment::hotkeyRouter() {
    if (platform_.presence.hotkeys == nullptr) {
        return nullptr;
    }
    return &filled(hotkeyRouter_, [this] {
        return std::make_unique<HotkeyRouter>(
            HotkeyRouter::Services{settingsStore(), *platform_.presence.hotkeys, &timerEngine()});
    });
}

OstrelNotificationCenter& AppEnvironment::notificationCenter() {
    return filled(notificationCenter_, [this] {
        return std::make_unique<OstrelNotificationCenter>(OstrelNotificationCenter::Services{
            platform_.notifications, settingsStore(), platform_.now});
    });
}

ToastDispatcher& AppEnvironment::toastDispatcher() {
    return filled(toastDispatcher_,
                  [this] { return std::make_unique<ToastDispatcher>(platform_.runLoop); });
}

ChimePlayer& AppEnvironment::chimePlayer() {
    return filled(chimePlayer_, [this] {
        return std::make_unique<ChimePlayer>(settingsStore(), platform_.sounds);
    });
}

TimerEngine& AppEnvironment::timerEngine() {
    return filled(timerEngine_, [this] {
        const EngineCollaborators collaborators{
            &penaltyEngine(),         &postponeService(),    &breakLog(),       meetingWatcher(),
            &videoPlaybackDetector(), &notificationCenter(), &toastDispatcher()};
        return std::make_unique<TimerEngine>(
            TimerEngine::Services{settingsStore(), sessionStateStore(), platform_.calendar,
                                  platform_.runLoop, platform_.now, platform_.makeUuid,
                                  collaborators},
            TimerEngine::Ticking::automatic);
    });
}

OverlayManager& AppEnvironment::overlayManager() {
    return filled(overlayManager_, [this] {
        const OverlayRecords records{&breakLog(),        &dailyCounter(), &penaltyEngine(),
                                     &postponeService(), &chimePlayer(),  &toastDispatcher()};
        return std::make_unique<OverlayManager>(OverlayManager::Services{
            platform_.preferences, settingsStore(), timerEngine(), platform_.overlayWindows,
            platform_.displays, platform_.systemEvents, platform_.motion, platform_.haptics,
            platform_.inputIdle, platform_.runLoop, platform_.now, platform_.makeUuid, records});
    });
}

void AppEnvironment::launch() {
    // Made first, so that it hears of a sleep before the time of it is noted.
    [[maybe_unused]] const OverlayManager& overlay = overlayManager();
    [[maybe_unused]] const StreakTracker& streak = streakTracker();
    subscriptions_.push_back(platform_.systemEvents.willSleep.subscribe([this] { noteSleep(); }));
    subscriptions_.push_back(platform_.systemEvents.didWake.subscribe([this] { noteWake(); }));
    countHoldsAndCredits();
    notificationCenter().start(answers());
    [[maybe_unused]] const IdleDetector& idle = idleDetector();
    [[maybe_unused]] const FocusFilterWatcher* focus = focusFilterWatcher();
    timerEngine().configure(PresetCatalog::active(*settingsStore().settings()));
    watchPresence();
}

// A hold counts when it is over. One that a body break takes over goes on with it: together they
// are one break.
void AppEnvironment::countHoldsAndCredits() {
    TimerEngine& engine = timerEngine();
    subscriptions_.push_back(
        engine.holdEnded.subscribe([this, &engine](BreakKind /*kind*/, HoldEnd how) {
            if (how != HoldEnd::folded || !engine.isDeferring()) {
                presenceTally().countHeld();
            }
        }));
    subscriptions_.push_back(engine.absenceCredited.subscribe(
        [this](BreakKind /*kind*/) { presenceTally().countCredited(); }));
}

void AppEnvironment::watchPresence() {
    subscriptions_.push_back(
        workHoursGate().dayEnded.subscribe([this] { dayEndAnnouncer().dayEnded(); }));
    workHoursGate().start();
    followFocusSetting();
    if (HotkeyRouter* router = hotkeyRouter()) {
        subscriptions_.push_back(router->refused.subscribe([this](const HotkeyChord& chord) {
            constexpr double kSecondsOnScreen = 8;
            Toast toast;
            toast.message = {
                "toast.hotkey_refused %@",
                {platform_.chordWords ? platform_.chordWords(chord) : chord.displayString}};
            toast.kind = Toast::Kind::warning;
            toastDispatcher().show({std::move(toast), kSecondsOnScreen});
        }));
        router->setActive(true);
    }
}

// The watcher leaves it to others to follow the setting: switched off it ends the pause that the
// watcher holds, switched on the state last heard counts.
void AppEnvironment::followFocusSetting() {
    subscriptions_.push_back(settingsStore().settings().onChange(
        [this, wasOn = settingsStore().settings()->pauseDuringDND](
            const SettingsModel& settings) mutable {
            const bool isOn = settings.pauseDuringDND;
            if (std::exchange(wasOn, isOn) == isOn || !focusFilterWatcher()) {
                return;
            }
            if (isOn) {
                focusFilterWatcher()->applyAgain();
            } else {
                timerEngine().endPause(PauseReason::focus);
            }
        }));
}

OstrelNotificationCenter::Answers AppEnvironment::answers() {
    const auto open = [this](AppWindow window) {
        if (platform_.openWindow) {
            platform_.openWindow(window);
        }
    };
    return {[this](BreakKind kind) { timerEngine().startNow(kind); },
            [this](BreakKind kind) { timerEngine().postpone(kind); },
            [this] { timerEngine().endAllPauses(); }, [open] { open(AppWindow::report); },
            [open] { open(AppWindow::app); }};
}

void AppEnvironment::quit() {
    overlayManager().close(CloseReason::forcedBySleep);
    notificationCenter().cancelBreakSoon();
    sessionStateStore().setLastQuitAt(platform_.now());
}

void AppEnvironment::noteSleep() {
    sessionStateStore().setSystemSleepWakeMarker(platform_.now());
}

// A clock set back meanwhile leaves no absence to speak of; a stored time may be any.
void AppEnvironment::noteWake() {
    const auto sleptAt = sessionStateStore().current()->systemSleepWakeMarker;
    if (sleptAt) {
        sessionStateStore().setSystemSleepWakeMarker(std::nullopt);
        const double sleptSec =
            platform_.systemEvents.sleptSec.value_or((platform_.now() - *sleptAt).count());
        timerEngine().resumeAfterLongAbsence(wholeSec(std::clamp(sleptSec, 0.0, kLongestSleepSec)));
    }
}

}  // namespace ostrel
