#include "app/control/setting_values.h"

#include <gtest/gtest.h>

#include "core/settings/settings_store.h"

namespace ostrel {
namespace {

const SettingValues::Languages kLanguages{"en", "de"};

// The value that is stored, or the key of what the setting takes instead.
std::string afterSetting(const std::string& name, const std::string& text) {
    const auto [settings, problem] = SettingValues::change({}, name, text, kLanguages);
    return settings ? SettingValues::valueOf(*settings, name).value() : problem.key;
}

TEST(SettingValues, EverySettingComesBackAsItIsShown) {
    SettingsModel settings;
    settings.customBreakMessages = {"Look \"up\"", "Ä, ö"};
    settings.eyeBreakIntervalSec = 600;
    settings.activePresetID = "custom";
    for (const std::string_view name : SettingValues::names()) {
        const auto text = SettingValues::valueOf(settings, name);
        ASSERT_TRUE(text) << name;
        const auto [again, problem] = SettingValues::change(settings, name, *text, kLanguages);
        EXPECT_EQ(again, settings) << name << " " << *text << " " << problem.key;
    }
    EXPECT_FALSE(SettingValues::valueOf(settings, "eyebreakintervalsec"));
    EXPECT_EQ(SettingsStore::parse(SettingValues::document(settings)), settings);
}

TEST(SettingValues, AValueIsReadStrictlyAndMustBeOnOffer) {
    const std::string pauses = asJson(SettingsModel{}.togglePauseHotkey).dump();
    const struct {
        const char* name;
        const char* text;
        const char* expected;
    } cases[] = {
        {"strictMode", "yes", "cli.setting.boolean %@"},
        {"eyeBreakIntervalSec", "900.0", "900"},
        {"eyeBreakIntervalSec", "900.5", "cli.setting.range %@ %@ %@"},
        {"eyeBreakIntervalSec", "\"900\"", "cli.setting.range %@ %@ %@"},
        {"eyeBreakIntervalSec", "1801", "cli.setting.range %@ %@ %@"},
        {"eyeBreakIntervalSec", "1e400", "cli.setting.range %@ %@ %@"},
        {"workHoursStartMinute", "1440", "cli.setting.range %@ %@ %@"},
        {"idleThresholdSec", "601", "cli.setting.choices %@ %@"},
        {"overlayTint", "\"navy\"", "navy"},
        {"overlayTint", "Navy", "cli.setting.choices %@ %@"},
        {"overlayDimOpacity", "0.2", "0.2"},
        {"overlayDimOpacity", "0.19", "cli.setting.number %@ %@ %@"},
        {"activePresetID", "mine", "cli.setting.choices %@ %@"},
        {"workDays", "[2,3]", "[2,3]"},
        {"workDays", "[0]", "cli.setting.days %@"},
        {"workDays", "2", "cli.setting.days %@"},
        {"customBreakMessages", R"(["a","b"])", R"(["a","b"])"},
        {"customBreakMessages", R"(["a",1])", "cli.setting.texts %@"},
        {"customBreakMessages", "[\"\xff\"]", "cli.setting.texts %@"},
        {"startBreakHotkey", R"({"keyCode":1})", "cli.setting.shortcut %@"},
        {"startBreakHotkey", R"({"keyCode":11,"modifiers":0,"displayString":"B"})",
         "settings.shortcuts.invalid"},
        {"startBreakHotkey", R"({"keyCode":49,"modifiers":256,"displayString":"Space"})",
         "settings.shortcuts.collision %@"},
        {"startBreakHotkey", pauses.c_str(), "settings.shortcuts.equal"},
        {"nothing", "1", "cli.setting.unknown %@"},
    };
    for (const auto& [name, text, expected] : cases) {
        EXPECT_EQ(afterSetting(name, text), expected) << name << " " << text;
    }
}

TEST(SettingValues, ChoicesAreWhatASettingTakes) {
    for (const std::string_view name : SettingValues::names()) {
        for (const std::string& choice : SettingValues::choices(name, kLanguages)) {
            EXPECT_EQ(afterSetting(std::string(name), choice), choice) << name;
        }
    }
    EXPECT_EQ(SettingValues::choices("languageRaw", kLanguages),
              (std::vector<std::string>{"system", "en", "de"}));
}

}  // namespace
}  // namespace ostrel
