#pragma once

#include <cstdint>
#include <functional>

#include "base/published.h"
#include "core/engine/engine_ports.h"
#include "platform/api/run_loop.h"

namespace ostrel {

class Displays;
class FrontmostApplication;
class PowerAssertions;
class ScreenWindows;

// Whether the user is watching a video in full screen.
//
// That is so when a window of the frontmost application covers a display and its process keeps the
// display awake. Whatever cannot be told counts against it, so that a break is rather shown.
class VideoPlaybackDetector : public VideoPlaybackProbing {
  public:
    static constexpr std::int64_t kPollSec = 10;
    static constexpr double kCoverage = 0.95;  // of the display's width and of its height

    // The system's side of the question. All of it outlives the detector.
    struct Sources {
        const FrontmostApplication& frontmost;
        const ScreenWindows& windows;
        const Displays& displays;
        const PowerAssertions& assertions;
    };
    using WindowInspector = std::function<bool()>;

    enum class Start { immediately, later };

    VideoPlaybackDetector(RunLoop& runLoop, WindowInspector windowInspector, Start start);
    VideoPlaybackDetector(const VideoPlaybackDetector&) = delete;
    VideoPlaybackDetector& operator=(const VideoPlaybackDetector&) = delete;
    ~VideoPlaybackDetector() override;

    // The test of the frontmost application.
    [[nodiscard]] static WindowInspector inspectorOf(Sources sources);

    [[nodiscard]] const Published<bool>& videoPlaying() const { return isVideoPlaying_; }
    // As of the last poll.
    [[nodiscard]] bool isVideoPlaying() const override { return *isVideoPlaying_; }

    // Polls in the next turn of the loop and then every kPollSec. A second start does nothing.
    void start();
    void stop();

  private:
    RunLoop& runLoop_;
    WindowInspector windowInspector_;
    Published<bool> isVideoPlaying_;
    Timer pollTimer_;
};

}  // namespace ostrel
