#include "app/desktop/command_line.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include "app/desktop/command_client.h"
#include "app/desktop/command_completion.h"
#include "app/desktop/command_output.h"
#include "app/desktop/command_table.h"
#include "app/desktop/desktop_application.h"
#include "app/desktop/known_languages.h"
#include "app/desktop/simulate_command.h"
#include "app/desktop/status_command.h"
#include "app/desktop/stored_documents.h"
#include "platform/linux/file_preferences.h"
#include "screens/texts/texts.h"

namespace ostrel {
namespace {

using Words = std::vector<std::string>;

bool asksForHelp(const Words& words) {
    return std::ranges::any_of(
        words, [](const std::string& word) { return word == "--help" || word == "-h"; });
}

DesktopOptions demoOptions(const CommandLine& line) {
    DesktopOptions options{DesktopOptions::Action::demo, std::nullopt};
    if (line.has("--screenshots")) {
        options.screenshotFolder = line.options.at("--screenshots");
    }
    return options;
}

// The toolkit's thread for the bus may still be starting: nothing is taken apart beneath it.
[[noreturn]] void leave(int status) {
    std::fflush(nullptr);
    std::_Exit(status);
}

int runCommand(int& argc, char** argv, const CommandLine& line, const StoredDocuments& documents,
               const char* version) {
    if (!line.command) {
        return complain(line.problem, ExitStatus::kUsage);
    }
    switch (line.command->id) {
        case Command::Id::version:
            return print(std::string("ostrel ") + version + '\n');
        case Command::Id::capabilities:
            return runStatusCommand(argc, argv);
        case Command::Id::simulate:
            return runSimulateCommand(line);
        default:
            return runClientCommand(argc, argv, line, documents);
    }
}

}  // namespace

int runCommandLine(int& argc, char** argv, const std::vector<std::string>& words,
                   const char* version) {
    if (words.empty()) {
        return runDesktopApplication(argc, argv, {});
    }
    const CommandLine line = parseCommandLine(words);
    if (line.command && line.command->id == Command::Id::demo && !asksForHelp(words)) {
        return runDesktopApplication(argc, argv, demoOptions(line));
    }
    surviveClosedPipes();
    const StoredDocuments documents(defaultPreferencesFolder());
    Texts::setLanguage(documents.settings().languageRaw);
    if (words.front() == "complete") {
        return print(completions({words.begin() + 1, words.end()}, knownLanguages()));
    }
    if (asksForHelp(words)) {
        return print(helpText());
    }
    leave(runCommand(argc, argv, line, documents, version));
}

}  // namespace ostrel
