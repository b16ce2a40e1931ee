#include "app/shell/login_item_sync.h"

#include <gtest/gtest.h>

#include <vector>

#include "core/settings/settings_store.h"
#include "platform/api/login_item.h"
#include "platform/virtual/memory_preferences.h"

namespace ostrel {
namespace {

struct ScriptedLoginItem : LoginItem {
    [[nodiscard]] bool isEnabled() const override { return isOn; }
    [[nodiscard]] bool setEnabled(bool isEnabled) override {
        asked.push_back(isEnabled);
        isOn = isRefused ? isOn : isEnabled;
        return !isRefused;
    }

    bool isOn = false;
    bool isRefused = false;
    std::vector<bool> asked;
};

struct LoginItemSyncTest : ::testing::Test {
    void choose(bool isOn) {
        store.update([isOn](SettingsModel& settings) { settings.launchAtLogin = isOn; });
    }
    bool isChosen() const { return store.settings()->launchAtLogin; }

    MemoryPreferences preferences;
    SettingsStore store{preferences};
    ScriptedLoginItem item;
};

TEST_F(LoginItemSyncTest, AtTheStartTheSystemIsRight) {
    for (const bool isOn : {true, false}) {
        choose(!isOn);
        item.isOn = isOn;
        const LoginItemSync sync(store, item);
        EXPECT_EQ(isChosen(), isOn);
        EXPECT_TRUE(item.asked.empty());
    }
}

TEST_F(LoginItemSyncTest, ARefusedChangeIsTakenBackBeforeTheUpdateReturns) {
    item.isRefused = true;
    const LoginItemSync sync(store, item);
    store.update([](SettingsModel& settings) { settings.strictMode = true; });
    choose(true);
    EXPECT_FALSE(isChosen());
    EXPECT_EQ(item.asked, (std::vector{true}));
}

}  // namespace
}  // namespace ostrel
