#include <gtest/gtest.h>

#include <algorithm>

#include "support/engine_bench.h"

namespace ostrel {

struct EngineWarningTest : ::testing::Test {
    EngineBench bench;
};

TEST_F(EngineWarningTest, BreakThatWillMergeIsNotAnnounced) {
    bench.launch(1200, 1300);
    bench.run(1200);
    EXPECT_EQ(bench.take(), (Events{"1200 toast merged 2"}));
    bench.run(99);
    EXPECT_EQ(bench.take(), (Events{"1240 soon body 60 or later", "1290 toast pre-break body 10"}));
}

TEST_F(EngineWarningTest, EyeBreakThatComesAfterTheBodyBreakIsAnnounced) {
    const std::pair<std::int64_t, bool> bodyIntervalsSec[] = {
        {1190, true}, {1198, true}, {1199, false}};
    for (const auto& [bodySec, isAnnounced] : bodyIntervalsSec) {
        EngineBench fresh;
        fresh.setUp([](SettingsModel& settings) { settings.preBreakToastLeadSec = 0; });
        fresh.launch(1200, bodySec);
        fresh.run(1140);
        const Events events = fresh.take();
        EXPECT_EQ(std::count(events.begin(), events.end(), "1140 soon eye 60 or later"),
                  isAnnounced)
            << bodySec;
    }
}

TEST_F(EngineWarningTest, StartNowTakesBackWhatWasAnnouncedAndBeginsTheCycleAnew) {
    TimerEngine& engine = bench.launch(1200, 9000);
    bench.run(1195);
    bench.take();
    engine.startNow(BreakKind::body);
    EXPECT_EQ(bench.take(), (Events{"1195 soon withdrawn", "1195 open body"}));
    bench.run(1);
    EXPECT_EQ(bench.take(), (Events{"1196 soon eye 4 or later", "1196 toast pre-break eye 4"}));
}

TEST_F(EngineWarningTest, WarningsWaitForAFreeScreenAndSayTheSecondsThatAreLeft) {
    bench.launch();
    bench.overlayPresented = true;
    bench.run(1150);
    bench.overlayPresented = false;
    bench.run(42);
    bench.overlayPresented = true;
    bench.run(3);
    bench.overlayPresented = false;
    EXPECT_EQ(bench.take(), (Events{"1151 soon eye 49 or later", "1190 toast pre-break eye 10"}));
}

}  // namespace ostrel
