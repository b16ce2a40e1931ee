#include "app/desktop/desktop_options.h"

namespace ostrel {

DesktopOptionsResult parseDesktopOptions(const std::vector<std::string>& arguments) {
    DesktopOptions options;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string& argument = arguments[i];
        if (argument == "--demo") {
            options.action = DesktopOptions::Action::demo;
        } else if (argument == "--screenshots" && i + 1 < arguments.size()) {
            options.screenshotFolder = arguments[++i];
        } else {
            return {std::nullopt, {"cli.error.unknown_command %@", {argument}}};
        }
    }
    if (options.screenshotFolder && options.action != DesktopOptions::Action::demo) {
        return {std::nullopt, {"cli.error.screenshots", {}}};
    }
    return {options, {}};
}

}  // namespace ostrel
