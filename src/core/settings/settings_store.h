#pragma once

#include <functional>
#include <optional>
#include <string_view>

#include "base/published.h"
#include "core/settings/document.h"
#include "core/settings/settings_model.h"
#include "platform/api/preferences_store.h"

namespace ostrel {

// Owns the live settings: loads and repairs them when it is made, publishes and saves each change.
//
// A first launch, and a document that had to be repaired, leave a complete document behind at once.
// A document without an object in it is replaced by the defaults.
class SettingsStore {
  public:
    static constexpr std::string_view kKey = "ostrel.settings.v1";

    explicit SettingsStore(PreferencesStore& preferences);
    SettingsStore(const SettingsStore&) = delete;
    SettingsStore& operator=(const SettingsStore&) = delete;

    // The settings in the text of a document, repaired as a loaded one is; absent without an object
    // in it.
    [[nodiscard]] static std::optional<SettingsModel> parse(std::string_view text);

    // `before` with what a document says that somebody hands in; what it leaves out stays, and so
    // does what the program has told the user before. Absent when there is no setting in it.
    [[nodiscard]] static std::optional<SettingsModel> merged(const SettingsModel& before,
                                                             std::string_view text);

    [[nodiscard]] const Published<SettingsModel>& settings() const { return settings_; }

    // Applies `change` to a copy and publishes it as a whole, saved before observers hear of it.
    void update(const std::function<void(SettingsModel&)>& change);

  private:
    [[nodiscard]] SettingsModel load();

    Document<SettingsModel> document_;
    Published<SettingsModel> settings_;
};

}  // namespace ostrel
