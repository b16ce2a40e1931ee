#pragma once

#include <memory>
#include <vector>

#include "app/environment/platform.h"
#include "base/subscription.h"
#include "core/engine/timer_engine.h"
#include "core/settings/session_state_store.h"
#include "core/settings/settings_store.h"
#include "overlay/overlay_manager.h"

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
    [[nodiscard]] TimerEngine& timerEngine();
    [[nodiscard]] OverlayManager& overlayManager();

  private:
    void noteSleep();
    void noteWake();

    Platform platform_;
    std::unique_ptr<SettingsStore> settingsStore_;
    std::unique_ptr<SessionStateStore> sessionStateStore_;
    std::unique_ptr<TimerEngine> timerEngine_;
    std::unique_ptr<OverlayManager> overlayManager_;
    std::vector<Subscription> subscriptions_;
};

}  // namespace ostrel
