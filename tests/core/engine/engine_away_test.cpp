#include <gtest/gtest.h>

#include "support/engine_bench.h"

namespace ostrel {

TEST(EngineAwayTest, AnAbsenceCountsAsTheBreaksItIsLongEnoughFor) {
    const struct {
        std::int64_t awaySec;
        std::int64_t eyeDurationSec;
        std::int64_t bodyDurationSec;
        const char* credit;  // as the toast says; empty: none
    } cases[] = {
        {119, 120, 300, ""},       {120, 120, 300, "eye 2"},      {179, 120, 300, "eye 2"},
        {300, 120, 300, "both 5"}, {200, 240, 180, "body 3"},     {45, 20, 300, "eye 1"},
        {0, 20, 300, ""},          {43'200, 20, 300, "both 720"}, {43'201, 20, 300, ""},
    };
    for (const auto& [awaySec, eyeDurationSec, bodyDurationSec, credit] : cases) {
        EngineBench bench;
        bench.setUp([eye = eyeDurationSec, body = bodyDurationSec](SettingsModel& settings) {
            quiet(settings);
            settings.breakSoonLeadSec = 60;
            settings.eyeBreakDurationSec = eye;
            settings.bodyBreakDurationSec = body;
        });
        TimerEngine& engine = bench.launch(1000, 5000);
        bench.run(950);
        EXPECT_EQ(bench.take(), Events{"940 soon eye 60 or later"});
        engine.markUserIdle();
        engine.markUserReturned(awaySec);
        const std::string what = credit;
        EXPECT_EQ(bench.take(), what.empty()
                                    ? Events{}
                                    : Events({"950 soon withdrawn", "950 toast away " + what}))
            << awaySec;
        const auto isCredited = [&what](const char* kind) {
            return what.starts_with(kind) || what.starts_with("both");
        };
        EXPECT_EQ(engine.state()->eye.remainingSec, isCredited("eye") ? 1000 : 50) << awaySec;
        EXPECT_EQ(engine.state()->body.remainingSec, isCredited("body") ? 5000 : 4050) << awaySec;
    }
}

}  // namespace ostrel
