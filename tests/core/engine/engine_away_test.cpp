#include <gtest/gtest.h>

#include "support/engine_bench.h"

namespace ostrel {

TEST(EngineAwayTest, AnAbsenceThatCountsAsABreakIsToldInMinutesAndWithdrawsTheWarning) {
    const std::pair<std::int64_t, Events> cases[] = {
        {19, {}},
        {45, {"950 soon withdrawn", "950 toast away eye 1"}},
        {179, {"950 soon withdrawn", "950 toast away eye 2"}},
        {43'200, {"950 soon withdrawn", "950 toast away both 720"}},
    };
    for (const auto& [awaySec, told] : cases) {
        EngineBench bench;
        bench.setUp([](SettingsModel& settings) {
            quiet(settings);
            settings.breakSoonLeadSec = 60;
            settings.eyeBreakDurationSec = 20;
        });
        TimerEngine& engine = bench.launch(1000, 5000);
        bench.run(950);
        EXPECT_EQ(bench.take(), Events{"940 soon eye 60 or later"});
        engine.markUserIdle();
        engine.markUserReturned(awaySec);
        EXPECT_EQ(bench.take(), told) << awaySec;
    }
}

}  // namespace ostrel
