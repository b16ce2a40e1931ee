#include "presence/video_playback_detector.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include "platform/api/displays.h"
#include "platform/api/frontmost_application.h"
#include "platform/api/power_assertions.h"
#include "platform/api/screen_windows.h"

namespace ostrel {
namespace {

bool covers(const ScreenWindows::Window& window, const Displays::Display& display) {
    return window.width >= VideoPlaybackDetector::kCoverage * display.frame.width &&
           window.height >= VideoPlaybackDetector::kCoverage * display.frame.height;
}

bool coversADisplay(std::int64_t process, const Displays& allDisplays,
                    const ScreenWindows& allWindows) {
    const auto displays = allDisplays.current();
    if (displays.empty()) {
        return false;
    }
    const auto windows = allWindows.onScreen();
    return windows && std::ranges::any_of(*windows, [&](const ScreenWindows::Window& window) {
               return window.processIdentifier == process && window.width && window.height &&
                      std::ranges::any_of(displays, [&window](const Displays::Display& display) {
                          return covers(window, display);
                      });
           });
}

bool keepsDisplayAwake(std::int64_t process, const PowerAssertions& assertions) {
    const auto all = assertions.byProcess();
    if (!all) {
        return false;
    }
    const auto found = all->find(process);
    return found != all->end() && std::ranges::any_of(found->second, [](const auto& type) {
               return type == "PreventUserIdleDisplaySleep" || type == "NoDisplaySleepAssertion";
           });
}

}  // namespace

VideoPlaybackDetector::VideoPlaybackDetector(RunLoop& runLoop, WindowInspector windowInspector,
                                             Start start)
    : runLoop_(runLoop), windowInspector_(std::move(windowInspector)) {
    if (start == Start::immediately) {
        this->start();
    }
}

VideoPlaybackDetector::~VideoPlaybackDetector() = default;

VideoPlaybackDetector::WindowInspector VideoPlaybackDetector::inspectorOf(Sources sources) {
    return [sources] {
        const auto application = sources.frontmost.current();
        return application &&
               coversADisplay(application->processIdentifier, sources.displays, sources.windows) &&
               keepsDisplayAwake(application->processIdentifier, sources.assertions);
    };
}

void VideoPlaybackDetector::start() {
    if (!pollTimer_) {
        pollTimer_ = runLoop_.repeat(std::chrono::seconds(0), std::chrono::seconds(kPollSec),
                                     [this] { isVideoPlaying_.set(windowInspector_()); });
    }
}

void VideoPlaybackDetector::stop() {
    pollTimer_.cancel();
}

}  // namespace ostrel
