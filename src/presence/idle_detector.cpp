#include "presence/idle_detector.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <optional>

#include "base/checked_seconds.h"
#include "core/engine/timer_engine.h"
#include "core/settings/settings_store.h"
#include "platform/api/input_idle.h"

namespace ostrel {

IdleDetector::IdleDetector(Services services, Start start) : services_(services) {
    if (start == Start::immediately && services_.settingsStore.settings()->detectUserIdle) {
        this->start();
    }
}

IdleDetector::~IdleDetector() = default;

void IdleDetector::start() {
    constexpr std::chrono::seconds kPeriod{kHeartbeatSec};
    if (!heartbeatTimer_) {
        heartbeatTimer_ = services_.runLoop.repeat(kPeriod, kPeriod, [this] { poll(); });
    }
}

void IdleDetector::stop() {
    heartbeatTimer_.cancel();
}

void IdleDetector::poll() {
    const SettingsModel& settings = *services_.settingsStore.settings();
    if (!settings.detectUserIdle) {
        if (*isIdle_) {
            comeBack(0);
        }
        return;
    }
    if (settings.detectVideoPlayback && services_.videoPlaybackDetector.isVideoPlaying()) {
        return;
    }
    const std::optional<double> reading = services_.poller.secondsSinceLastInput();
    if (!reading || std::isnan(*reading)) {
        return;
    }
    const double idleSec = *reading;
    const double thresholdSec =
        std::max(kLeastThresholdSec, static_cast<double>(settings.idleThresholdSec));
    const bool isAway = idleSec >= thresholdSec;
    if (isAway) {
        longestObservedIdleSec_ = std::max(longestObservedIdleSec_, idleSec);
    }
    if (isAway && !*isIdle_) {
        isIdle_.set(true);
        if (services_.timerEngine) {
            services_.timerEngine->markUserIdle();
        }
    } else if (!isAway && *isIdle_) {
        comeBack(wholeSec(std::round(longestObservedIdleSec_)));
    }
}

void IdleDetector::comeBack(std::int64_t awaySec) {
    isIdle_.set(false);
    longestObservedIdleSec_ = 0;
    if (services_.timerEngine) {
        services_.timerEngine->markUserReturned(awaySec);
    }
}

}  // namespace ostrel
