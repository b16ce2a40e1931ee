#include "presence/video_playback_detector.h"

#include <gtest/gtest.h>

#include <vector>

#include "support/presence_bench.h"

namespace ostrel {
namespace {

using Window = ScreenWindows::Window;

constexpr std::int64_t kPlayer = 7;
const std::string kAwake = "PreventUserIdleDisplaySleep";

struct VideoPlaybackDetectorTest : ::testing::Test, RecordsBench {
    VideoPlaybackDetectorTest() {
        displays.set({{1, {0, 0, 1920, 1080}}, {2, {1920, 0, 1000, 2000}}}, 1);
        frontmost.set({{std::nullopt, kPlayer}});
        windows.set({{kPlayer, 1920, 1080}});
        assertions.set({{kPlayer, {kAwake}}});
    }
    [[nodiscard]] bool inspect() const { return inspector(); }

    VirtualFrontmostApplication frontmost;
    VirtualScreenWindows windows;
    VirtualPowerAssertions assertions;
    VirtualDisplays displays;
    VideoPlaybackDetector::WindowInspector inspector =
        VideoPlaybackDetector::inspectorOf({frontmost, windows, displays, assertions});
};

TEST_F(VideoPlaybackDetectorTest, AWindowOfTheFrontmostProgramHasToCoverADisplay) {
    const struct {
        std::vector<Window> windows;
        bool covers;
    } cases[] = {
        {{{kPlayer, 1824, 1026}}, true},  // 95 % of both
        {{{kPlayer, 1823.9, 1080}}, false},
        {{{kPlayer, 1920, 1025.9}}, false},
        {{{kPlayer, 4000, 3000}}, true},
        {{{kPlayer, 950, 1900}}, true},  // of the other display
        {{{kPlayer, 960, 540}, {kPlayer, 1920, 1080}}, true},
        {{{8, 1920, 1080}}, false},
        {{{std::nullopt, 1920, 1080}}, false},
        {{{kPlayer, std::nullopt, 1080}}, false},
        {{{kPlayer, 1920, std::nullopt}}, false},
        {{}, false},
    };
    for (const auto& [list, covers] : cases) {
        windows.set(list);
        EXPECT_EQ(inspect(), covers) << testing::PrintToString(list.size());
    }
}

TEST_F(VideoPlaybackDetectorTest, ItsProcessHasToKeepTheDisplayAwake) {
    const struct {
        PowerAssertions::ByProcess assertions;
        bool isAwake;
    } cases[] = {
        {{{kPlayer, {"NoDisplaySleepAssertion"}}}, true},
        {{{kPlayer, {std::nullopt, "PreventUserIdleSystemSleep", kAwake}}}, true},
        {{{kPlayer, {"PreventUserIdleSystemSleep", std::nullopt}}}, false},
        {{{8, {kAwake}}}, false},
        {{}, false},
    };
    for (const auto& [all, isAwake] : cases) {
        assertions.set(all);
        EXPECT_EQ(inspect(), isAwake);
    }
    assertions.set({{kPlayer, {kAwake}}});
    frontmost.set(std::nullopt);
    EXPECT_FALSE(inspect());
    frontmost.set({{std::nullopt, kPlayer}});
    displays.set({}, std::nullopt);
    EXPECT_FALSE(inspect());
}

TEST_F(VideoPlaybackDetectorTest, PollsAtOnceAndEveryTenSecondsAndTellsOfChangesAlone) {
    VideoPlaybackDetector detector(runLoop, inspector, VideoPlaybackDetector::Start::immediately);
    std::vector<bool> heard;
    const Subscription watching =
        detector.videoPlaying().onChange([&](bool isPlaying) { heard.push_back(isPlaying); });
    detector.start();
    EXPECT_FALSE(detector.isVideoPlaying());
    run(0);
    EXPECT_TRUE(detector.isVideoPlaying());
    assertions.set({});
    run(9.9);
    EXPECT_TRUE(detector.isVideoPlaying()) << "a question runs no test";
    run(0.1);
    EXPECT_FALSE(detector.isVideoPlaying());
    run(30);
    assertions.set({{kPlayer, {kAwake}}});
    detector.stop();
    run(30);
    EXPECT_EQ(heard, (std::vector<bool>{true, false}));
}

}  // namespace
}  // namespace ostrel
