#include "app/desktop/command_table.h"

#include <algorithm>
#include <cstddef>
#include <sstream>

#include "screens/texts/texts.h"

namespace ostrel {
namespace {

using Id = Command::Id;
using Argument = Command::Argument;
using Need = Command::Argument::Need;

constexpr std::string_view kDemo = "--demo";
constexpr std::string_view kScreenshots = "--screenshots";

bool beginsWith(const std::vector<std::string>& words, const std::vector<std::string>& beginning) {
    return words.size() >= beginning.size() &&
           std::equal(beginning.begin(), beginning.end(), words.begin());
}

// A word that begins the names of several commands and is none: the usage tells of all of them.
std::string usageOfAll(const std::string& first) {
    std::string words;
    for (const Command& command : commands()) {
        const std::vector<std::string> name = wordsOf(command.name, ' ');
        if (name.size() == 2 && name.front() == first) {
            words += (words.empty() ? "" : "|") + name.back();
        }
    }
    return words.empty() ? words : "ostrel " + first + ' ' + words;
}

std::vector<std::string> movedToFront(std::vector<std::string> words, std::ptrdiff_t index) {
    const auto word = words.begin() + index;
    std::rotate(words.begin(), word, word + 1);
    return words;
}

CommandLine problem(std::string key, std::vector<std::string> arguments) {
    return {nullptr, {std::move(key), std::move(arguments)}, {}, {}};
}

LocalizedText unexpected(const Command& command, const std::string& word) {
    return {"cli.error.unexpected %@ %@", {word, usageOf(command)}};
}

// Takes the options and arguments of one command apart, word by word.
class Reader {
  public:
    explicit Reader(const Command& command) { line_.command = &command; }

    void read(const std::vector<std::string>& words, std::size_t first) {
        for (std::size_t i = first; i < words.size() && isFine(); ++i) {
            const std::string& word = words[i];
            // Where there are no options a number may be negative.
            const bool isOption = word.starts_with('-') && word != "-" && !isOptionsOver_ &&
                                  !line_.command->options.empty();
            if (word == "--" && !isOptionsOver_) {
                isOptionsOver_ = true;
            } else if (isOption) {
                i += readOption(words, i);
            } else {
                line_.arguments.push_back(word);
            }
        }
        if (isFine()) {
            countArguments();
        }
    }

    [[nodiscard]] CommandLine take() {
        if (!isFine()) {
            line_.command = nullptr;
        }
        return std::move(line_);
    }

  private:
    [[nodiscard]] bool isFine() const { return line_.problem.key.empty(); }

    // How many more words it took.
    std::size_t readOption(const std::vector<std::string>& words, std::size_t at) {
        const std::string name = words[at].substr(0, words[at].find('='));
        for (const Command::Option& option : line_.command->options) {
            const std::vector<std::string> names = wordsOf(option.names, '|');
            if (std::ranges::find(names, name) != names.end()) {
                return take(option, names, words, at);
            }
        }
        line_.problem = unexpected(*line_.command, words[at]);
        return 0;
    }

    std::size_t take(const Command::Option& option, const std::vector<std::string>& names,
                     const std::vector<std::string>& words, std::size_t at) {
        const std::string& word = words[at];
        const std::size_t equals = word.find('=');
        const std::string name = word.substr(0, equals);
        const bool hasOther =
            std::ranges::any_of(names, [&](const std::string& other) { return line_.has(other); });
        if (hasOther || (option.values.empty() && equals != std::string::npos)) {
            line_.problem = unexpected(*line_.command, word);
            return 0;
        }
        if (option.values.empty() || equals != std::string::npos) {
            line_.options[name] = option.values.empty() ? "" : word.substr(equals + 1);
            return 0;
        }
        if (at + 1 == words.size()) {
            line_.problem = {"cli.error.missing %@", {usageOf(*line_.command)}};
            return 0;
        }
        line_.options[name] = words[at + 1];
        return 1;
    }

    void countArguments() {
        const std::vector<Argument>& wanted = line_.command->arguments;
        const auto least = std::ranges::count(wanted, Need::required, &Command::Argument::need);
        if (line_.arguments.size() > wanted.size()) {
            line_.problem = unexpected(*line_.command, line_.arguments[wanted.size()]);
        } else if (line_.arguments.size() < static_cast<std::size_t>(least)) {
            line_.problem = {"cli.error.missing %@", {usageOf(*line_.command)}};
        }
    }

    CommandLine line_;
    bool isOptionsOver_ = false;
};

std::vector<Command> statusCommands() {
    return {
        {Id::status,
         "status",
         "[--json|--compact] [--watch]",
         "cli.help.status",
         {{"--json|--compact", ""}, {"--watch", ""}},
         {}},
        {Id::capabilities, "status --capabilities", "", "cli.help.capabilities", {}, {}},
        {Id::report,
         "report",
         "[--range weekly|monthly|full] [--json|--csv]",
         "cli.help.report",
         {{"--range", "weekly|monthly|full"}, {"--json|--csv", ""}},
         {}},
    };
}

std::vector<Command> breakCommands() {
    return {
        {Id::pause,
         "pause",
         "[30m|2h|until-morning|indefinite]",
         "cli.help.pause",
         {},
         {{Need::optional, "30m|1h|2h|until-morning|indefinite"}}},
        {Id::resume, "resume", "", "cli.help.resume", {}, {}},
        {Id::startBreak, "break", "eye|body", "cli.help.break", {}, {{Need::required, "eye|body"}}},
        {Id::skip, "skip", "", "cli.help.skip", {}, {}},
        {Id::postpone, "postpone", "", "cli.help.postpone", {}, {}},
    };
}

std::vector<Command> settingsCommands() {
    return {
        {Id::settingsGet,
         "settings get",
         "[SETTING]",
         "cli.help.settings_get",
         {},
         {{Need::optional, Argument::kSetting}}},
        {Id::settingsSet,
         "settings set",
         "SETTING VALUE",
         "cli.help.settings_set",
         {},
         {{Need::required, Argument::kSetting}, {Need::required, Argument::kSettingValue}}},
        {Id::settingsExport, "settings export", "", "cli.help.settings_export", {}, {}},
        {Id::settingsImport,
         "settings import",
         "FILE|-",
         "cli.help.settings_import",
         {},
         {{Need::required, Argument::kFile}}},
    };
}

}  // namespace

const std::vector<Command>& commands() {
    static const std::vector<Command> kCommands = [] {
        std::vector<Command> all{
            {Id::run, "", "", "cli.help.run", {}, {}},
            {Id::demo,
             kDemo,
             "[--screenshots FOLDER]",
             "cli.help.demo",
             {{kScreenshots, Argument::kFile}},
             {}},
        };
        for (const auto& more : {statusCommands(), breakCommands(), settingsCommands()}) {
            all.insert(all.end(), more.begin(), more.end());
        }
        all.push_back({Id::simulate,
                       "simulate",
                       "[--seed N] SCENARIO.json|-",
                       "cli.help.simulate",
                       {{"--seed", Argument::kNumber}},
                       {{Need::required, Argument::kFile}}});
        all.push_back({Id::version, "--version", "", "cli.help.version", {}, {}});
        all.push_back({Id::help, "--help", "", "cli.help.help", {}, {}});
        return all;
    }();
    return kCommands;
}

const Command* findCommand(const std::vector<std::string>& words) {
    const Command* found = nullptr;
    for (const Command& command : commands()) {
        const std::vector<std::string> name = wordsOf(command.name, ' ');
        if (!name.empty() && beginsWith(words, name) &&
            (!found || command.name.size() > found->name.size())) {
            found = &command;
        }
    }
    return found;
}

std::string usageOf(const Command& command) {
    std::string usage = "ostrel";
    for (const std::string_view part : {command.name, command.usage}) {
        if (!part.empty()) {
            usage += ' ' + std::string(part);
        }
    }
    return usage;
}

std::vector<std::string> wordsOf(std::string_view text, char separator) {
    std::vector<std::string> words;
    std::istringstream in{std::string(text)};
    for (std::string word; std::getline(in, word, separator);) {
        words.push_back(word);
    }
    return words;
}

CommandLine parseCommandLine(const std::vector<std::string>& words) {
    if (!words.empty() && words.front().substr(0, words.front().find('=')) == kScreenshots) {
        const auto demo = std::ranges::find(words, kDemo);
        return demo == words.end() ? problem("cli.error.screenshots", {})
                                   : parseCommandLine(movedToFront(words, demo - words.begin()));
    }
    const Command* command = findCommand(words);
    if (!command) {
        const std::string usage = words.empty() ? std::string() : usageOfAll(words.front());
        if (!usage.empty() && words.size() == 1) {
            return problem("cli.error.missing %@", {usage});
        }
        return usage.empty() ? problem("cli.error.unknown_command %@",
                                       {words.empty() ? std::string() : words.front()})
                             : problem("cli.error.unexpected %@ %@", {words[1], usage});
    }
    Reader reader(*command);
    reader.read(words, wordsOf(command->name, ' ').size());
    return reader.take();
}

std::string helpText() {
    std::string text = Texts::of("cli.about").toStdString() + '\n';
    for (const Command& command : commands()) {
        text += "\n  " + usageOf(command) + "\n      " + Texts::of(command.helpKey).toStdString() +
                '\n';
    }
    return text;
}

}  // namespace ostrel
