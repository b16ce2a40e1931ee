#include "presence/idle_detector.h"

#include <gtest/gtest.h>

#include <memory>

#include "support/presence_bench.h"

namespace ostrel {
namespace {

struct Video : VideoPlaybackProbing {
    [[nodiscard]] bool isVideoPlaying() const override { return isPlaying; }
    bool isPlaying = false;
};

struct IdleDetectorTest : ::testing::Test, PresenceBench {
    void read(std::optional<double> seconds) {
        inputIdle.setReading([seconds] { return seconds; });
    }
    // The user is away for that long, as the readings have it, and comes back.
    void goAwayFor(double seconds) {
        read(seconds);
        detector->poll();
        read(0);
        detector->poll();
    }
    void tick(int times) {
        for (int i = 0; i < times; ++i) {
            engine.tick();
        }
    }
    void restart() {
        detector = std::make_unique<IdleDetector>(
            IdleDetector::Services{settings, video, inputIdle, runLoop, &engine},
            IdleDetector::Start::immediately);
    }

    Video video;
    VirtualInputIdle inputIdle;
    std::unique_ptr<IdleDetector> detector = std::make_unique<IdleDetector>(
        IdleDetector::Services{settings, video, inputIdle, runLoop, &engine},
        IdleDetector::Start::immediately);
};

TEST_F(IdleDetectorTest, TheThresholdCountsInclusiveAndIsNeverBelowHalfAMinute) {
    const struct {
        std::int64_t thresholdSec = 0;
        std::optional<double> reading;
        bool isIdle = false;
    } cases[] = {{300, 299.9, false}, {300, 300, true}, {10, 29.9, false},
                 {10, 30, true},      {-5, 29, false},  {60, std::nullopt, false}};
    for (const auto& [thresholdSec, reading, isIdle] : cases) {
        setUp([threshold = thresholdSec](auto& model) { model.idleThresholdSec = threshold; });
        read(reading);
        detector->poll();
        EXPECT_EQ(*detector->isIdle(), isIdle) << thresholdSec;
        EXPECT_EQ(engine.state()->eye.isAway, isIdle);
        EXPECT_EQ(engine.state()->body.isAway, isIdle);
        read(0);
        detector->poll();
        EXPECT_FALSE(*detector->isIdle());
    }
}

TEST_F(IdleDetectorTest, AnAbsenceIsAsLongAsItsLargestReading) {
    setUp([](auto& model) { model.idleThresholdSec = 60; });
    read(70);
    detector->poll();
    read(119.4);
    detector->poll();
    read(100);  // a reading may fall without anybody at the keys
    detector->poll();
    tick(1);
    engine.markUserReturned(0);
    tick(9);
    read(1);
    detector->poll();
    EXPECT_EQ(engine.state()->eye.remainingSec, 1191) << "119 s are no eye break of 120 s";
    goAwayFor(119.5);
    EXPECT_EQ(engine.state()->eye.remainingSec, 1200) << "halves count up";
    tick(10);
    goAwayFor(43'200.4);
    EXPECT_EQ(engine.state()->eye.remainingSec, 1200);
    tick(10);
    goAwayFor(43'201);
    EXPECT_EQ(engine.state()->eye.remainingSec, 1190) << "too long to be a break";
}

TEST_F(IdleDetectorTest, WhileAVideoPlaysNobodyLeavesOrReturns) {
    video.isPlaying = true;
    read(1000);
    detector->poll();
    EXPECT_FALSE(*detector->isIdle());
    setUp([](auto& model) { model.detectVideoPlayback = false; });
    detector->poll();
    EXPECT_TRUE(*detector->isIdle());
    setUp([](auto& model) { model.detectVideoPlayback = true; });
    read(0);
    detector->poll();
    EXPECT_TRUE(*detector->isIdle());
    video.isPlaying = false;
    detector->poll();
    EXPECT_FALSE(*detector->isIdle());
}

TEST_F(IdleDetectorTest, SwitchedOffMeanwhileTheAbsenceEarnsNothing) {
    tick(10);
    read(1000);
    detector->poll();
    setUp([](auto& model) { model.detectUserIdle = false; });
    detector->poll();
    EXPECT_FALSE(*detector->isIdle());
    EXPECT_FALSE(engine.state()->eye.isAway);
    EXPECT_EQ(engine.state()->eye.remainingSec, 1190);
    detector->poll();
    EXPECT_FALSE(*detector->isIdle());
}

TEST_F(IdleDetectorTest, SamplesEveryHalfMinuteFromALaunchThatAsksForIt) {
    read(1000);
    run(29.9);
    EXPECT_FALSE(*detector->isIdle());
    detector->start();
    run(0.1);
    EXPECT_TRUE(*detector->isIdle());
    read(0);
    run(29.9);
    EXPECT_TRUE(*detector->isIdle());
    run(0.1);
    EXPECT_FALSE(*detector->isIdle());

    setUp([](auto& model) { model.detectUserIdle = false; });
    restart();
    setUp([](auto& model) { model.detectUserIdle = true; });
    read(1000);
    run(300);
    EXPECT_FALSE(*detector->isIdle()) << "from the next launch on";
    restart();
    run(30);
    EXPECT_TRUE(*detector->isIdle());
    detector->stop();
    read(0);
    run(300);
    EXPECT_TRUE(*detector->isIdle());
}

}  // namespace
}  // namespace ostrel
