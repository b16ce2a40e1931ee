#pragma once

#include <optional>
#include <string>
#include <vector>

#include "base/localized_text.h"

namespace ostrel {

// What the command line asks of the desktop application.
struct DesktopOptions {
    enum class Action { run, demo };

    Action action = Action::run;
    std::optional<std::string> screenshotFolder;  // with the demo only
};

struct DesktopOptionsResult {
    std::optional<DesktopOptions> options;
    LocalizedText problem;  // why there are none
};

[[nodiscard]] DesktopOptionsResult parseDesktopOptions(const std::vector<std::string>& arguments);

}  // namespace ostrel
