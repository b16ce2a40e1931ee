#pragma once

#include <optional>
#include <string>

namespace ostrel {

// What the command line asks of the desktop application.
struct DesktopOptions {
    enum class Action { run, demo };

    Action action = Action::run;
    std::optional<std::string> screenshotFolder;  // with the demo only
};

}  // namespace ostrel
