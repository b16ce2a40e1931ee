#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "base/localized_text.h"

namespace ostrel {

// A command of the command line. Help, usage errors and the shells' completions are all made of the
// one table of them.
struct Command {
    enum class Id {
        run,
        demo,
        status,
        capabilities,
        pause,
        resume,
        startBreak,
        skip,
        postpone,
        report,
        settingsGet,
        settingsSet,
        settingsExport,
        settingsImport,
        simulate,
        version,
        help,
    };
    // Several names that exclude each other are separated by '|'. The values of one that takes a
    // value are as those of an argument.
    struct Option {
        std::string_view names;
        std::string_view values;
    };
    struct Argument {
        enum class Need { required, optional };
        // Words separated by '|', or what they are.
        static constexpr std::string_view kFile = ":file";
        static constexpr std::string_view kNumber = ":number";
        static constexpr std::string_view kSetting = ":setting";
        static constexpr std::string_view kSettingValue = ":value";
        Need need = Need::required;
        std::string_view values;
    };

    Id id = Id::run;
    std::string_view name;   // one word or two
    std::string_view usage;  // what follows the name
    std::string_view helpKey;
    std::vector<Option> options;
    std::vector<Argument> arguments;
};

// In the order in which --help lists them.
[[nodiscard]] const std::vector<Command>& commands();

// The one whose name `words` begin with, null when there is none.
[[nodiscard]] const Command* findCommand(const std::vector<std::string>& words);

// "ostrel pause [30m|...]"
[[nodiscard]] std::string usageOf(const Command& command);

[[nodiscard]] std::vector<std::string> wordsOf(std::string_view text, char separator);

// A command line taken apart.
struct CommandLine {
    // Whether one of the command's options was given, by its name.
    [[nodiscard]] bool has(std::string_view option) const { return options.contains(option); }

    const Command* command = nullptr;  // null: there is a problem
    LocalizedText problem;
    std::map<std::string, std::string, std::less<>> options;  // with their values, if they take one
    std::vector<std::string> arguments;
};

// What `words` ask for; the first of them is the command's, or an option of the demo.
[[nodiscard]] CommandLine parseCommandLine(const std::vector<std::string>& words);

// What --help prints, in the current language.
[[nodiscard]] std::string helpText();

}  // namespace ostrel
