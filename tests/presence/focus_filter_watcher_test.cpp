#include "presence/focus_filter_watcher.h"

#include <gtest/gtest.h>

#include "support/presence_bench.h"

namespace ostrel {
namespace {

using Value = DistributedAnnouncements::Value;
using UserInfo = std::map<std::string, Value>;

struct FocusFilterWatcherTest : ::testing::Test, PresenceBench {
    void announce(const UserInfo& userInfo,
                  const char* name = "com.apple.donotdisturb.notification") {
        announcements.announced.send({name, userInfo});
    }
    [[nodiscard]] bool isOn() const { return *watcher.behavior() == FocusBehavior::on; }

    DistributedAnnouncements announcements;
    FocusFilterWatcher watcher{{settings, announcements, &engine}};
};

TEST_F(FocusFilterWatcherTest, TheFirstKeyWithAUsableValueDecides) {
    const struct {
        UserInfo userInfo;
        bool wasOn;
        bool isOn;
    } cases[] = {
        {{{"active", true}}, false, true},
        {{{"state", std::int64_t{-1}}}, false, true},
        {{{"isActive", std::string("TRUE")}}, false, true},
        {{{"DoNotDisturb", std::string("Active")}}, false, true},
        {{{"active", std::string("1")}}, false, true},
        {{{"active", std::string("yes")}}, true, false},
        {{{"active", std::string("ACTİVE")}}, true, false},
        {{{"active", std::int64_t{0}}}, true, false},
        {{{"state", true}, {"active", false}}, true, false},
        {{{"active", Value()}, {"DoNotDisturb", true}}, false, true},
        {{{"Active", true}}, false, false},
        {{{"active", Value()}}, true, true},
        {{}, true, true},
    };
    for (const auto& [userInfo, wasOn, shouldBeOn] : cases) {
        announce({{"active", wasOn}});
        announce(userInfo);
        EXPECT_EQ(isOn(), shouldBeOn) << testing::PrintToString(userInfo.size());
        EXPECT_EQ(isHeldBy(PauseReason::focus), shouldBeOn);
    }
}

TEST_F(FocusFilterWatcherTest, WithTheSettingOffTheStateIsOnlyKept) {
    setUp([](auto& model) { model.pauseDuringDND = false; });
    announce({{"active", true}});
    EXPECT_TRUE(isOn());
    EXPECT_FALSE(session.isPaused());
    engine.pause(PauseReason::focus);
    announce({{"active", false}});
    EXPECT_TRUE(isHeldBy(PauseReason::focus));
    announce({{"active", true}});
    setUp([](auto& model) { model.pauseDuringDND = true; });
    engine.endAllPauses();
    watcher.applyAgain();
    EXPECT_TRUE(isHeldBy(PauseReason::focus));
}

}  // namespace
}  // namespace ostrel
