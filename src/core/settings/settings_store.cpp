#include "core/settings/settings_store.h"

#include <algorithm>
#include <utility>

#include "core/settings/preset_catalog.h"
#include "core/settings/settings_migrator.h"

namespace ostrel {
namespace {

constexpr const char* kTimingKeys[] = {"eyeBreakIntervalSec", "eyeBreakDurationSec",
                                       "bodyBreakIntervalSec", "bodyBreakDurationSec"};

void normalizePresetDurations(SettingsModel& settings) {
    if (settings.presetDurationsNormalized) {
        return;
    }
    if (const auto preset = PresetCatalog::find(settings.activePresetID)) {
        PresetCatalog::writeInto(settings, *preset);
    } else {
        // The eye duration alone: the other three were never offered outside their ranges.
        settings.eyeBreakDurationSec =
            std::clamp(settings.eyeBreakDurationSec, TimingRanges::kEyeDurationSec.least,
                       TimingRanges::kEyeDurationSec.most);
    }
    settings.presetDurationsNormalized = true;
}

void migrateReminders(SettingsModel& settings) {
    if (settings.remindersMigrated) {
        return;
    }
    settings.breakSoonLeadSec = PreBreakDefaults::legacyBreakSoonLeadSec(settings.notifyBreakSoon);
    settings.preBreakToastLeadSec = PreBreakDefaults::kToastLeadSec;
    settings.remindersMigrated = true;
}

SettingsModel repaired(SettingsModel settings) {
    normalizePresetDurations(settings);
    migrateReminders(settings);
    return settings;
}

}  // namespace

SettingsStore::SettingsStore(PreferencesStore& preferences)
    : document_(preferences, kKey), settings_((SettingsMigrator::migrate(preferences), load())) {}

SettingsModel SettingsStore::load() {
    const std::optional<SettingsModel> decoded = document_.load();
    SettingsModel settings = repaired(decoded.value_or(SettingsModel{}));
    if (settings != decoded) {
        document_.save(settings);
    }
    return settings;
}

std::optional<SettingsModel> SettingsStore::parse(std::string_view text) {
    const std::optional<Json> json = parseJson(text);
    const auto settings = json ? SettingsModel::decode(*json) : std::nullopt;
    return settings ? std::optional(repaired(*settings)) : std::nullopt;
}

// A value of the timing alone makes the timing the user's own, and a preset alone brings its
// values.
std::optional<SettingsModel> SettingsStore::merged(const SettingsModel& before,
                                                   std::string_view text) {
    const std::optional<Json> handed = parseJson(text);
    if (!handed || !handed->is_object()) {
        return std::nullopt;
    }
    const bool namesPreset = handed->contains("activePresetID");
    const bool hasTiming = std::ranges::any_of(
        kTimingKeys, [&handed](const char* key) { return handed->contains(key); });
    SettingsModel base = before;
    if (hasTiming && !namesPreset) {
        PresetCatalog::makeOwn(base);
    }
    std::optional<Json> all = parseJson(printJson(base).text.value_or(""));
    if (!all) {
        return std::nullopt;
    }
    bool isAnyKnown = false;
    for (const auto& [key, value] : handed->items()) {
        if (all->contains(key)) {
            (*all)[key] = value;
            isAnyKnown = true;
        }
    }
    auto settings = isAnyKnown ? SettingsModel::decode(*all) : std::nullopt;
    if (!settings) {
        return std::nullopt;
    }
    settings->hasOnboarded = settings->hasOnboarded || before.hasOnboarded;
    const auto preset = PresetCatalog::find(settings->activePresetID);
    if (preset && namesPreset && !hasTiming) {
        PresetCatalog::writeInto(*settings, *preset);
    }
    return repaired(*settings);
}

void SettingsStore::update(const std::function<void(SettingsModel&)>& change) {
    SettingsModel next = *settings_;
    change(next);
    if (next == *settings_) {
        return;
    }
    document_.save(next);
    settings_.set(std::move(next));
}

}  // namespace ostrel
