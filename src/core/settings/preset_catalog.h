#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace ostrel {

struct SettingsModel;

// A named set of the four timing values, all in seconds.
struct PresetDefinition {
    std::string id;    // stored in SettingsModel::activePresetID
    std::string name;  // shown as it stands, outside the catalogue only
    std::int64_t eyeIntervalSec = 0;
    std::int64_t eyeDurationSec = 0;
    std::int64_t bodyIntervalSec = 0;
    std::int64_t bodyDurationSec = 0;

    bool operator==(const PresetDefinition&) const = default;
};

// The presets that ship with the program, in the order in which screens list them.
namespace PresetCatalog {

// Names no preset: the four values are the user's own.
inline constexpr std::string_view kOwnID = "custom";

[[nodiscard]] const PresetDefinition& light();
[[nodiscard]] const PresetDefinition& standard();
[[nodiscard]] const PresetDefinition& strict();
[[nodiscard]] const std::array<PresetDefinition, 3>& all();

// Case-sensitive.
[[nodiscard]] std::optional<PresetDefinition> find(std::string_view id);

// The catalogue's preset of the settings' `activePresetID`, whatever the four values say; without
// one the user's own values under that identifier, named "Custom".
[[nodiscard]] PresetDefinition active(const SettingsModel& settings);

// What to show as its name: a localisation key, absent when `name` is shown as it stands.
[[nodiscard]] std::optional<std::string_view> nameKey(const PresetDefinition& preset);

// Writes the preset's identifier and four values into the settings.
void writeInto(SettingsModel& settings, const PresetDefinition& preset);

// The four values that are in force become the user's own.
void makeOwn(SettingsModel& settings);

}  // namespace PresetCatalog
}  // namespace ostrel
