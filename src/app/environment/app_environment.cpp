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
    if (platform_.frontmost == nullptr) {
        return nullptr;
    }
    return &filled(meetingWatcher_, [this] {
        return std::make_unique<MeetingWatcher>(
            MeetingWatcher::Services{settingsStore(), *platform_.frontmost, platform_.runLoop});
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
            &penaltyEngine(), &postponeService(),    &breakLog(),       meetingWatcher(),
            nullptr,          &notificationCenter(), &toastDispatcher()};
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
    notificationCenter().start(answers());
    timerEngine().configure(PresetCatalog::active(*settingsStore().settings()));
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
        const double sleptSec = (platform_.now() - *sleptAt).count();
        timerEngine().resumeAfterLongAbsence(wholeSec(std::clamp(sleptSec, 0.0, kLongestSleepSec)));
    }
}

}  // namespace ostrel
