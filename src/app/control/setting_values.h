#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/localized_text.h"
#include "core/settings/settings_model.h"

// The settings one by one, by the names of their fields in the document.
namespace ostrel::SettingValues {

// Codes of the languages that the texts are there in.
using Languages = std::vector<std::string>;

[[nodiscard]] std::vector<std::string_view> names();

// A text as it stands, everything else as JSON. Absent when there is no such setting.
[[nodiscard]] std::optional<std::string> valueOf(const SettingsModel& settings,
                                                 std::string_view name);

// What it can be set to; empty when that is no list.
[[nodiscard]] std::vector<std::string> choices(std::string_view name, const Languages& languages);

struct Change {
    std::optional<SettingsModel> settings;
    LocalizedText problem;  // why there are none
};

// The settings with one of them changed to `text`, which is read as strictly as a stored value is
// (a text may stand without its quotes) and must be within the limits of the setting. A timing
// value makes all four the user's own; the identifier of a preset brings its values with it.
[[nodiscard]] Change change(const SettingsModel& settings, std::string_view name,
                            const std::string& text, const Languages& languages);

// The whole document, indented.
[[nodiscard]] std::string document(const SettingsModel& settings);

}  // namespace ostrel::SettingValues
