#include "app/desktop/desktop_options.h"

namespace ostrel {

DesktopOptionsResult parseDesktopOptions(const std::vector<std::string>& arguments) {
    DesktopOptions options;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string& argument = arguments[i];
        if (argument == "--help" || argument == "-h") {
            return {DesktopOptions{DesktopOptions::Action::showHelp, {}}, {}};
        }
        if (argument == "--version") {
            return {DesktopOptions{DesktopOptions::Action::showVersion, {}}, {}};
        }
        if (argument == "--demo") {
            options.action = DesktopOptions::Action::demo;
        } else if (argument == "--screenshots" && i + 1 < arguments.size()) {
            options.screenshotFolder = arguments[++i];
        } else {
            return {std::nullopt, "unknown argument \"" + argument + "\"; see ostrel --help"};
        }
    }
    if (options.screenshotFolder && options.action != DesktopOptions::Action::demo) {
        return {std::nullopt, "--screenshots goes with --demo"};
    }
    return {options, {}};
}

const char* usageText() {
    return "Ostrel reminds you to rest your eyes and to move.\n"
           "\n"
           "  ostrel                                     run in the status area\n"
           "  ostrel --demo [--screenshots FOLDER]       one eye break and one body break within\n"
           "                                             half a minute, on settings of its own\n"
           "  ostrel status --capabilities               what works on this desktop, what does "
           "not,\n"
           "                                             and what would make it work\n"
           "  ostrel simulate [--seed N] SCENARIO.json   what a scripted day would bring, as JSON\n"
           "  ostrel --version\n"
           "  ostrel --help\n";
}

}  // namespace ostrel
