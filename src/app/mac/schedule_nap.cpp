#include "app/mac/schedule_nap.h"

#include "app/environment/app_environment.h"

namespace ostrel {

ScheduleNap::ScheduleNap(AppEnvironment& environment) : environment_(environment) {
    const auto again = [this](const auto&...) { follow(); };
    changes_.push_back(environment.timerEngine().state().onChange(again));
    changes_.push_back(environment.timerEngine().holdBegan.subscribe(again));
    changes_.push_back(environment.timerEngine().holdEnded.subscribe(again));
    changes_.push_back(environment.sessionStateStore().current().onChange(again));
    changes_.push_back(environment.settingsStore().settings().onChange(again));
    changes_.push_back(environment.overlayManager().activeSession().onChange(again));
    follow();
}

void ScheduleNap::follow() {
    const TimerEngine& engine = environment_.timerEngine();
    hold_.follow({environment_.settingsStore().settings()->ostrelEnabled,
                  environment_.sessionStateStore().isPaused(), engine.state()->eye.isAway,
                  engine.isDeferring(),
                  environment_.overlayManager().activeSession()->has_value()});
}

}  // namespace ostrel
