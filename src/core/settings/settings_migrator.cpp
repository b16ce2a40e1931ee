#include "core/settings/settings_migrator.h"

#include <algorithm>
#include <charconv>
#include <string>

namespace ostrel {
namespace {

std::optional<std::int64_t> versionOf(std::string_view key) {
    if (!key.starts_with(SettingsMigrator::kKeyPrefix)) {
        return std::nullopt;
    }
    const std::string_view digits = key.substr(SettingsMigrator::kKeyPrefix.size());
    const char* end = digits.data() + digits.size();
    std::int64_t version = 0;
    const auto [rest, failure] = std::from_chars(digits.data(), end, version);
    return failure == std::errc{} && rest == end ? std::optional(version) : std::nullopt;
}

// Version 1 is the first there is, so that no step exists.
void runStep(PreferencesStore& /*preferences*/, std::int64_t /*fromVersion*/) {}

}  // namespace

std::optional<std::int64_t> SettingsMigrator::highestVersion(const std::vector<std::string>& keys) {
    std::optional<std::int64_t> highest;
    for (const std::string& key : keys) {
        if (const auto version = versionOf(key)) {
            highest = std::max(highest.value_or(*version), *version);
        }
    }
    return highest;
}

void SettingsMigrator::migrate(PreferencesStore& preferences) {
    const auto stored = highestVersion(preferences.keys());
    // Steps begin at version 0, the number below the first document there was.
    for (auto version = std::max<std::int64_t>(stored.value_or(kCurrentVersion), 0);
         version < kCurrentVersion; ++version) {
        runStep(preferences, version);
    }
}

}  // namespace ostrel
