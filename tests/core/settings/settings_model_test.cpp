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

TEST(SettingsModelTest, WritesEveryFieldInOrderAndReadsItBack) {
    const Json json = asJson(SettingsModel{});
    EXPECT_EQ(json.size(), 44U);
    EXPECT_EQ(json.begin().key(), "launchAtLogin");
    EXPECT_EQ(std::prev(json.end()).key(), "presetDurationsNormalized");
    EXPECT_EQ(JsonCodec<SettingsModel>::decode(json), SettingsModel{});
}

TEST(SettingsModelTest, DefaultsAreThoseThatUsersAreTold) {
    const char* defaults = R"({"launchAtLogin":false,"strictMode":false,"detectUserIdle":true,
        "pauseDuringDND":true,"delayBreakOnFullscreenVideo":true,"detectVideoPlayback":true,
        "idleThresholdSec":300,"creditAwayAsBreak":true,"deferAppBundleIDs":["us.zoom.xos",
        "app.zoom.us","us.zoom.ZoomClips","com.microsoft.teams","com.microsoft.teams2",
        "com.cisco.webexmeetingsapp","com.cisco.webex.meetings","com.tinyspeck.slackmacgap",
        "com.apple.FaceTime","com.hnc.Discord",
        "com.google.Chrome.app.kjbdgfilnfhdoflbpgamdcdgpehopbep"],"maxDeferralSec":900,
        "eyeBreakIntervalSec":1200,"eyeBreakDurationSec":120,"bodyBreakIntervalSec":3000,
        "bodyBreakDurationSec":300,"mergeNearbyBreaks":true,"workHoursEnabled":false,
        "workHoursStartMinute":540,"workHoursEndMinute":1080,"workDays":[2,3,4,5,6],
        "notifyDayEnd":true,"activePresetID":"standard","chimeMode":"both","overlayTint":"ink",
        "overlayDimOpacity":0.7,"overlayStyle":"guided","customBreakMessages":[],
        "eyePresentation":"fullScreen","bodyPresentation":"fullScreen","dailyGoalBreaks":6,
        "disableSkipPenalty":false,
        "startBreakHotkey":{"keyCode":11,"modifiers":768,"displayString":"⌘⇧B"},
        "togglePauseHotkey":{"keyCode":35,"modifiers":4352,"displayString":"⌃⌘P"},
        "notifyBreakSoon":false,"notifyConsecutiveSkips":true,"notifyPauseForgotten":true,
        "notifyWeeklySummary":true,"breakSoonLeadSec":60,"preBreakToastLeadSec":10,
        "remindersMigrated":true,"hasOnboarded":false,"appearance":"system",
        "languageRaw":"system","ostrelEnabled":true,"presetDurationsNormalized":true})";
    EXPECT_EQ(asJson(SettingsModel{}), *parseJson(defaults));
    EXPECT_EQ(decoded("{}"), SettingsModel{});
}

TEST(SettingsModelTest, UnreadableFieldKeepsItsDefaultAndCostsNothingElse) {
    using S = SettingsModel;
    const std::pair<const char*, SettingsModel> cases[] = {
        {R"({"chimeMode":"loud","eyeBreakIntervalSec":900})",
         with(&S::eyeBreakIntervalSec, std::int64_t{900})},
        {R"({"eyeBreakIntervalSec":"900","strictMode":true})", with(&S::strictMode, true)},
        {R"({"eyeBreakIntervalSec":null})", {}},
        {R"({"eyeBreakIntervalSec":100})", with(&S::eyeBreakIntervalSec, std::int64_t{100})},
        {R"({"eyeBreakIntervalSec":900.0})", with(&S::eyeBreakIntervalSec, std::int64_t{900})},
        {R"({"eyeBreakIntervalSec":900.5})", {}},
        {R"({"eyeBreakIntervalSec":true})", {}},
        {R"({"eyeBreakIntervalSec":9223372036854775808})", {}},
        {R"({"eyeBreakIntervalSec":-9223372036854775808})",
         with(&S::eyeBreakIntervalSec, INT64_MIN)},
        {R"({"eyeBreakIntervalSec":1e300})", {}},
        {R"({"overlayDimOpacity":1e400,"strictMode":true,"idleThresholdSec":-2E999})",
         with(&S::strictMode, true)},
        {R"({"strictMode":1})", {}},
        {R"({"strictMode":"true"})", {}},
        {R"({"overlayDimOpacity":1})", with(&S::overlayDimOpacity, 1.0)},
        {R"({"workDays":[]})", with(&S::workDays, std::set<std::int64_t>{})},
        {R"({"workDays":[7,1,7]})", with(&S::workDays, std::set<std::int64_t>{1, 7})},
        {R"({"workDays":[1,"2"]})", {}},
        {R"({"customBreakMessages":["a",1]})", {}},
        {R"({"appearance":"dark","unheardOf":[1]})", with(&S::appearance, S::Appearance::dark)},
        {R"({"appearance":"Dark"})", {}},
        {R"({"startBreakHotkey":{"keyCode":1,"modifiers":256}})", {}},
        {R"({"startBreakHotkey":{"keyCode":-1,"modifiers":256,"displayString":"x"}})", {}},
        {R"({"startBreakHotkey":{"keyCode":1,"modifiers":256,"displayString":"x"}})",
         with(&S::startBreakHotkey, HotkeyChord{1, 256, "x"})},
    };
    for (const auto& [text, expected] : cases) {
        EXPECT_EQ(decoded(text), expected) << text;
    }
}

TEST(SettingsModelTest, OnlyAnObjectIsADocument) {
    for (const char* text : {"[]", "1", "null", "\"{}\""}) {
        EXPECT_FALSE(SettingsModel::decode(*parseJson(text))) << text;
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

TEST(PresetCatalogTest, PresetsLieWithinTheSlidersAndHaveTheirNames) {
    const auto within = [](std::int64_t value, TimingRanges::Range range) {
        return value >= range.least && value <= range.most;
    };
    std::vector<std::string> names;
    for (const PresetDefinition& preset : PresetCatalog::all()) {
        EXPECT_TRUE(within(preset.eyeIntervalSec, TimingRanges::kEyeIntervalSec) &&
                    within(preset.eyeDurationSec, TimingRanges::kEyeDurationSec) &&
                    within(preset.bodyIntervalSec, TimingRanges::kBodyIntervalSec) &&
                    within(preset.bodyDurationSec, TimingRanges::kBodyDurationSec))
            << preset.id;
        names.emplace_back(PresetCatalog::nameKey(preset).value_or(""));
    }
    EXPECT_EQ(names,
              (std::vector<std::string>{"preset.name.light", "label.standard", "label.strict"}));
    EXPECT_FALSE(PresetCatalog::nameKey({"custom", "Custom"}));
    EXPECT_EQ(PresetCatalog::light(), (PresetDefinition{"light", "Light", 1800, 45, 5400, 180}));
    EXPECT_EQ(PresetCatalog::standard(),
              (PresetDefinition{"standard", "Standard", 1200, 120, 3000, 300}));
}

}  // namespace ostrel
