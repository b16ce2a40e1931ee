#include "presence/idle_detector.h"

#include <gtest/gtest.h>

#include <limits>

#include "platform/virtual/virtual_devices.h"
#include "presence/video_playback_detector.h"
#include "support/engine_bench.h"

namespace ostrel {

TEST(IdleDetectorTest, WhereTheSystemCannotTellNobodyLeavesAndNobodyComesBack) {
    EngineBench bench;
    TimerEngine& engine = bench.launch();
    const VideoPlaybackDetector noFilm(
        bench.runLoop, [] { return false; }, VideoPlaybackDetector::Start::later);
    VirtualInputIdle input;
    IdleDetector detector({bench.settings, noFilm, input, bench.runLoop, &engine},
                          IdleDetector::Start::immediately);
    constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
    const std::pair<std::optional<double>, bool> samples[] = {
        {std::nullopt, false}, {kNaN, false}, {400, true}, {std::nullopt, true}, {kNaN, true}};
    for (const auto& [reading, isIdle] : samples) {
        input.setReading([reading = reading] { return reading; });
        bench.run(30);
        EXPECT_EQ(*detector.isIdle(), isIdle);
        EXPECT_EQ(engine.state()->eye.isAway, isIdle);
    }
    EXPECT_EQ(bench.take(), Events{});
    input.setReading([] { return 0; });
    bench.run(30);
    EXPECT_EQ(bench.take(), Events{"180 toast away both 6"});
    detector.start();
    detector.stop();
    input.setReading([] { return 400; });
    bench.run(60);
    EXPECT_FALSE(*detector.isIdle());
}

}  // namespace ostrel
