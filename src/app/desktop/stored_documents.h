#pragma once

#include <filesystem>
#include <functional>
#include <string_view>

#include "app/control/control_outcome.h"
#include "core/settings/settings_model.h"

namespace ostrel {

class SettingsStore;

// The documents in the preferences folder, for the time when the program does not run. Looking at
// them changes nothing on the disk.
class StoredDocuments {
  public:
    explicit StoredDocuments(std::filesystem::path folder) : folder_(std::move(folder)) {}

    // Whether a running program owns them: what is in its memory may be newer.
    [[nodiscard]] bool areInUse() const;

    [[nodiscard]] SettingsModel settings() const;

    // See printReport().
    [[nodiscard]] ControlOutcome report(std::string_view range, std::string_view format) const;

    // Runs `change` on the settings, while no program can start. Refused when one runs, and when
    // the disk or the system does not take what was changed. Needs a QCoreApplication.
    [[nodiscard]] ControlOutcome change(
        const std::function<ControlOutcome(SettingsStore&)>& change) const;

  private:
    std::filesystem::path folder_;
};

}  // namespace ostrel
