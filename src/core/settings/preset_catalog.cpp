#include "core/settings/preset_catalog.h"

#include <algorithm>
#include <utility>

#include "core/settings/settings_model.h"

namespace ostrel::PresetCatalog {

const std::array<PresetDefinition, 3>& all() {
    static const std::array<PresetDefinition, 3> kPresets = {
        PresetDefinition{"light", "Light", 1800, 45, 5400, 180},
        PresetDefinition{"standard", "Standard", 1200, 120, 3000, 300},
        PresetDefinition{"strict", "Strict", 900, 90, 2400, 300},
    };
    return kPresets;
}

const PresetDefinition& light() {
    return all()[0];
}
const PresetDefinition& standard() {
    return all()[1];
}
const PresetDefinition& strict() {
    return all()[2];
}

std::optional<PresetDefinition> find(std::string_view id) {
    const auto found =
        std::find_if(all().begin(), all().end(),
                     [id](const PresetDefinition& preset) { return preset.id == id; });
    return found == all().end() ? std::nullopt : std::optional(*found);
}

PresetDefinition active(const SettingsModel& settings) {
    if (auto preset = find(settings.activePresetID)) {
        return *std::move(preset);
    }
    return {settings.activePresetID,       "Custom",
            settings.eyeBreakIntervalSec,  settings.eyeBreakDurationSec,
            settings.bodyBreakIntervalSec, settings.bodyBreakDurationSec};
}

std::optional<std::string_view> nameKey(const PresetDefinition& preset) {
    static constexpr std::pair<std::string_view, std::string_view> kKeys[] = {
        {"light", "preset.name.light"}, {"standard", "label.standard"}, {"strict", "label.strict"}};
    for (const auto& [id, key] : kKeys) {
        if (preset.id == id) {
            return key;
        }
    }
    return std::nullopt;
}

void writeInto(SettingsModel& settings, const PresetDefinition& preset) {
    settings.activePresetID = preset.id;
    settings.eyeBreakIntervalSec = preset.eyeIntervalSec;
    settings.eyeBreakDurationSec = preset.eyeDurationSec;
    settings.bodyBreakIntervalSec = preset.bodyIntervalSec;
    settings.bodyBreakDurationSec = preset.bodyDurationSec;
}

void makeOwn(SettingsModel& settings) {
    PresetDefinition own = active(settings);
    own.id = kOwnID;
    writeInto(settings, own);
}

}  // namespace ostrel::PresetCatalog
