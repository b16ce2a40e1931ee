#include "core/settings/settings_store.h"

#include <gtest/gtest.h>

#include "core/settings/settings_migrator.h"
#include "platform/virtual/memory_preferences.h"

namespace ostrel {

constexpr std::string_view kKey = SettingsStore::kKey;

struct SettingsStoreTest : ::testing::Test {
    SettingsStoreTest() {
        watching = preferences.written.subscribe([this](const std::string&) { ++writes; });
    }
    Json stored() { return *parseJson(*preferences.read(kKey)); }
    SettingsModel load(std::string_view bytes) {
        preferences.write(kKey, bytes);
        writes = 0;
        return *SettingsStore(preferences).settings();
    }
    MemoryPreferences preferences;
    int writes = 0;
    Subscription watching;
};

TEST_F(SettingsStoreTest, RemindersAreMigratedOnceAndWrittenBack) {
    const std::pair<const char*, std::int64_t> cases[] = {
        {R"({"remindersMigrated":false,"notifyBreakSoon":true,"preBreakToastLeadSec":5})", 120},
        {R"({"remindersMigrated":false,"notifyBreakSoon":false})", 0},
    };
    for (const auto& [bytes, leadSec] : cases) {
        const SettingsModel settings = load(bytes);
        EXPECT_EQ(settings.breakSoonLeadSec, leadSec);
        EXPECT_EQ(settings.preBreakToastLeadSec, 10);
        EXPECT_TRUE(settings.remindersMigrated);
        EXPECT_EQ(stored()["breakSoonLeadSec"], leadSec);
        writes = 0;
        EXPECT_EQ(*SettingsStore(preferences).settings(), settings);
        EXPECT_EQ(writes, 0);
    }
}

TEST_F(SettingsStoreTest, PresetDurationsAreNormalizedOnce) {
    const auto timings = [this](const char* presetID, std::int64_t eyeDurationSec) {
        const SettingsModel s = load(Json({{"presetDurationsNormalized", false},
                                           {"activePresetID", presetID},
                                           {"eyeBreakIntervalSec", 60},
                                           {"eyeBreakDurationSec", eyeDurationSec},
                                           {"bodyBreakDurationSec", 60}})
                                         .dump());
        EXPECT_TRUE(s.presetDurationsNormalized);
        return std::vector{s.eyeBreakIntervalSec, s.eyeBreakDurationSec, s.bodyBreakIntervalSec,
                           s.bodyBreakDurationSec};
    };
    EXPECT_EQ(timings("strict", 60), (std::vector<std::int64_t>{900, 90, 2400, 300}));
    EXPECT_EQ(timings("mine", 600), (std::vector<std::int64_t>{60, 240, 3000, 60}));
    EXPECT_EQ(timings("mine", 5), (std::vector<std::int64_t>{60, 20, 3000, 60}));
}

}  // namespace ostrel
