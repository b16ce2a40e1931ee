#include "app/environment/app_environment.h"

#include <utility>

#include "base/checked_seconds.h"

namespace ostrel {

AppEnvironment::AppEnvironment(Platform platform) : platform_(std::move(platform)) {}
AppEnvironment::~AppEnvironment() = default;

SettingsStore& AppEnvironment::settingsStore() {
    if (!settingsStore_) {
        settingsStore_ = std::make_unique<SettingsStore>(platform_.preferences);
    }
    return *settingsStore_;
}

SessionStateStore& AppEnvironment::sessionStateStore() {
    if (!sessionStateStore_) {
        sessionStateStore_ =
            std::make_unique<SessionStateStore>(platform_.preferences, platform_.now());
    }
    return *sessionStateStore_;
}

TimerEngine& AppEnvironment::timerEngine() {
    if (!timerEngine_) {
        timerEngine_ = std::make_unique<TimerEngine>(TimerEngine::Services{settingsStore(),
                                                                           sessionStateStore(),
                                                                           platform_.calendar,
                                                                           platform_.runLoop,
                                                                           platform_.now,
                                                                           platform_.makeUuid,
                                                                           {}},
                                                     TimerEngine::Ticking::automatic);
    }
    return *timerEngine_;
}

OverlayManager& AppEnvironment::overlayManager() {
    if (!overlayManager_) {
        overlayManager_ =
            std::make_unique<OverlayManager>(OverlayManager::Services{settingsStore(),
                                                                      timerEngine(),
                                                                      platform_.overlayWindows,
                                                                      platform_.displays,
                                                                      platform_.systemEvents,
                                                                      platform_.motion,
                                                                      platform_.haptics,
                                                                      platform_.runLoop,
                                                                      platform_.now,
                                                                      platform_.makeUuid,
                                                                      {}});
    }
    return *overlayManager_;
}

void AppEnvironment::launch() {
    // Made first, so that it hears of a sleep before the time of it is noted.
    [[maybe_unused]] const OverlayManager& overlay = overlayManager();
    subscriptions_.push_back(platform_.systemEvents.willSleep.subscribe([this] { noteSleep(); }));
    subscriptions_.push_back(platform_.systemEvents.didWake.subscribe([this] { noteWake(); }));
    timerEngine().configure(PresetCatalog::active(*settingsStore().settings()));
}

void AppEnvironment::quit() {
    overlayManager().close(CloseReason::forcedBySleep);
    sessionStateStore().setLastQuitAt(platform_.now());
}

void AppEnvironment::noteSleep() {
    sessionStateStore().setSystemSleepWakeMarker(platform_.now());
}

// A clock set back meanwhile leaves no absence to speak of.
void AppEnvironment::noteWake() {
    const auto sleptAt = sessionStateStore().current()->systemSleepWakeMarker;
    if (sleptAt) {
        sessionStateStore().setSystemSleepWakeMarker(std::nullopt);
        timerEngine().resumeAfterLongAbsence(wholeSec((platform_.now() - *sleptAt).count()));
    }
}

}  // namespace ostrel
