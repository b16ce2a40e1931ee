#include "presence/video_playback_detector.h"

#include <gtest/gtest.h>

#include "platform/virtual/virtual_devices.h"

namespace ostrel {
namespace {

// How often somebody has asked.
struct CountedAssertions : PowerAssertions {
    [[nodiscard]] std::optional<ByProcess> byProcess() const override {
        ++asked;
        return {{{7, {std::nullopt, "PreventUserIdleDisplaySleep"}}}};
    }
    mutable int asked = 0;
};

}  // namespace

TEST(VideoPlaybackDetectorTest, WhoKeepsTheDisplayAwakeIsAskedForACoveringWindowAlone) {
    VirtualFrontmostApplication frontmost;
    frontmost.set({{"film", 7}});
    VirtualDisplays displays;
    const Displays::Display large{1, {0, 0, 1920, 1080}};
    const Displays::Display small{2, {1920, 0, 1280, 720}};
    const ScreenWindows::Window overSmall{7, 1216, 684};
    const ScreenWindows::Window narrow{7, 1215, 684};
    const ScreenWindows::Window another{8, 1920, 1080};
    const ScreenWindows::Window unknown{7, std::nullopt, 1080};
    const struct {
        std::vector<Displays::Display> displays;
        std::vector<ScreenWindows::Window> windows;
        bool isFilm;
    } cases[] = {
        {{large, small}, {narrow, overSmall}, true},
        {{large}, {overSmall}, false},
        {{large, small}, {narrow, another, unknown}, false},
        {{large, small}, {}, false},
        {{}, {overSmall}, false},
    };
    VirtualScreenWindows windows;
    for (const auto& [shown, all, isFilm] : cases) {
        displays.set(shown, std::nullopt);
        windows.set(all);
        const CountedAssertions assertions;
        const auto isPlaying =
            VideoPlaybackDetector::inspectorOf({frontmost, windows, displays, assertions});
        EXPECT_EQ(isPlaying(), isFilm);
        EXPECT_EQ(assertions.asked, isFilm ? 1 : 0);
    }
}

}  // namespace ostrel
