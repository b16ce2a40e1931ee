#pragma once

#include <cstdint>

#include "base/published.h"
#include "platform/api/run_loop.h"

namespace ostrel {

class InputIdle;
class SettingsStore;
class TimerEngine;
class VideoPlaybackProbing;

// Notices that the user has stopped using keyboard and pointer, has the engine hold both countdowns
// meanwhile, and tells it on the return how long the absence was.
//
// An absence is as long as the largest idle reading taken during it. While a video plays nobody
// leaves and nobody comes back.
class IdleDetector {
  public:
    static constexpr std::int64_t kHeartbeatSec = 30;
    static constexpr double kLeastThresholdSec = 30;

    // What the detector works with. All of it outlives the detector.
    struct Services {
        const SettingsStore& settingsStore;
        const VideoPlaybackProbing& videoPlaybackDetector;
        const InputIdle& poller;
        RunLoop& runLoop;
        TimerEngine* timerEngine = nullptr;  // may be absent
    };

    enum class Start { immediately, later };

    // Starting immediately means so only where the settings ask for detection at that moment.
    IdleDetector(Services services, Start start);
    IdleDetector(const IdleDetector&) = delete;
    IdleDetector& operator=(const IdleDetector&) = delete;
    ~IdleDetector();

    [[nodiscard]] const Published<bool>& isIdle() const { return isIdle_; }

    // Samples every kHeartbeatSec, the first time after as long. A second start does nothing.
    void start();
    void stop();

    // One sample. Where the system cannot tell nobody leaves and nobody comes back.
    void poll();

  private:
    void comeBack(std::int64_t awaySec);

    Services services_;
    Published<bool> isIdle_;
    double longestObservedIdleSec_ = 0;  // of the present absence
    Timer heartbeatTimer_;
};

}  // namespace ostrel
