#include <cstdio>
#include <string>
#include <vector>

#include "app/desktop/desktop_application.h"
#include "app/desktop/status_command.h"
#include "app/simulator/simulate_command.h"

int main(int argc, char** argv) {
    using ostrel::DesktopOptions;
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    if (!arguments.empty() && arguments.front() == "simulate") {
        return ostrel::runSimulateCommand({arguments.begin() + 1, arguments.end()});
    }
    if (!arguments.empty() && arguments.front() == "status") {
        return ostrel::runStatusCommand(argc, argv, {arguments.begin() + 1, arguments.end()});
    }
    const auto [options, error] = ostrel::parseDesktopOptions(arguments);
    if (!options) {
        std::fprintf(stderr, "ostrel: %s\n", error.c_str());
        return 2;
    }
    switch (options->action) {
        case DesktopOptions::Action::showHelp:
            std::fputs(ostrel::usageText(), stdout);
            return 0;
        case DesktopOptions::Action::showVersion:
            std::puts("ostrel " OSTREL_VERSION);
            return 0;
        case DesktopOptions::Action::run:
        case DesktopOptions::Action::demo:
            break;
    }
    return ostrel::runDesktopApplication(argc, argv, *options);
}
