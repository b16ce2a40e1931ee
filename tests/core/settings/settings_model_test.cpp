#include "core/settings/settings_model.h"

#include <gtest/gtest.h>

#include "core/settings/preset_catalog.h"

namespace ostrel {
namespace {

SettingsModel decoded(const char* text) {
    const auto json = parseJson(text);
    EXPECT_TRUE(json) << text;
    return SettingsModel::decode(*json).value_or(SettingsModel{});
}

// The default model with one change.
template <class Value>
SettingsModel with(Value SettingsModel::*field, Value value) {
    SettingsModel settings;
    settings.*field = std::move(value);
    return settings;
}

}  // namespace

TEST(SettingsModelTest, UnreadableFieldKeepsItsDefaultAndCostsNothingElse) {
    using S = SettingsModel;
    const std::pair<const char*, SettingsModel> cases[] = {
        {R"({"chimeMode":"loud","eyeBreakIntervalSec":900})",
         with(&S::eyeBreakIntervalSec, std::int64_t{900})},
        {R"({"eyeBreakIntervalSec":"900","strictMode":true})", with(&S::strictMode, true)},
        {R"({"eyeBreakIntervalSec":null})", {}},
        {R"({"eyeBreakIntervalSec":900.0})", with(&S::eyeBreakIntervalSec, std::int64_t{900})},
        {R"({"eyeBreakIntervalSec":900.5})", {}},
        {R"({"eyeBreakIntervalSec":9223372036854775808})", {}},
        {R"({"eyeBreakIntervalSec":-9223372036854775808})",
         with(&S::eyeBreakIntervalSec, INT64_MIN)},
        {R"({"overlayDimOpacity":1e400,"strictMode":true,"idleThresholdSec":-2E999})",
         with(&S::strictMode, true)},
        {R"({"strictMode":1})", {}},
        {R"({"overlayDimOpacity":1})", with(&S::overlayDimOpacity, 1.0)},
        {R"({"workDays":[7,1,7]})", with(&S::workDays, std::set<std::int64_t>{1, 7})},
        {R"({"workDays":[1,"2"]})", {}},
        {R"({"customBreakMessages":["a",1]})", {}},
        {R"({"appearance":"dark","unheardOf":[1]})", with(&S::appearance, S::Appearance::dark)},
        {R"({"appearance":"Dark"})", {}},
        {R"({"startBreakHotkey":{"keyCode":1,"modifiers":256}})", {}},
        {R"({"startBreakHotkey":{"keyCode":-1,"modifiers":256,"displayString":"x"}})", {}},
    };
    for (const auto& [text, expected] : cases) {
        EXPECT_EQ(decoded(text), expected) << text;
    }
}

TEST(PresetCatalogTest, ActivePresetGoesByIdentifierAlone) {
    SettingsModel settings;
    settings.eyeBreakIntervalSec = 777;
    settings.activePresetID = "strict";
    EXPECT_EQ(PresetCatalog::active(settings),
              (PresetDefinition{"strict", "Strict", 900, 90, 2400, 300}));
    settings.activePresetID = "Standard";
    EXPECT_EQ(PresetCatalog::active(settings),
              (PresetDefinition{"Standard", "Custom", 777, 120, 3000, 300}));
}

}  // namespace ostrel
