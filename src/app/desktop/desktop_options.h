#pragma once

#include <optional>
#include <string>
#include <vector>

namespace ostrel {

// What the command line asks of the desktop application.
struct DesktopOptions {
    enum class Action { run, demo, showHelp, showVersion };

    Action action = Action::run;
    std::optional<std::string> screenshotFolder;  // with the demo only
};

struct DesktopOptionsResult {
    std::optional<DesktopOptions> options;
    std::string error;  // why there are none
};

[[nodiscard]] DesktopOptionsResult parseDesktopOptions(const std::vector<std::string>& arguments);

// What --help prints.
[[nodiscard]] const char* usageText();

}  // namespace ostrel
