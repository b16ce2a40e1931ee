#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "platform/api/preferences_store.h"

namespace ostrel {

// Brings settings stored under an older version number up to the current one.
//
// A document of version n lives under kKeyPrefix + n. A later version of the program may have left
// its document behind: then there is nothing to do.
class SettingsMigrator {
  public:
    static constexpr std::string_view kKeyPrefix = "ostrel.settings.v";
    static constexpr std::int64_t kCurrentVersion = 1;

    // Runs one step after the other, each from version n to n + 1.
    static void migrate(PreferencesStore& preferences);

    // The highest version among `keys`; a remainder that is no decimal number does not count.
    [[nodiscard]] static std::optional<std::int64_t> highestVersion(
        const std::vector<std::string>& keys);
};

}  // namespace ostrel
