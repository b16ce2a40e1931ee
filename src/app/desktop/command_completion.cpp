#include "app/desktop/command_completion.h"

#include <algorithm>
#include <cstddef>

#include "app/desktop/command_table.h"
#include "screens/texts/texts.h"

namespace ostrel {
namespace {

using Argument = Command::Argument;
using Words = std::vector<std::string>;

// Collects the candidates that begin as the unfinished word does, each once.
class Candidates {
  public:
    explicit Candidates(std::string beginning) : beginning_(std::move(beginning)) {}

    void add(const std::string& word, const std::string& purpose = {}) {
        if (word.starts_with(beginning_) && std::ranges::find(words_, word) == words_.end()) {
            words_.push_back(word);
            lines_ += purpose.empty() ? word + '\n' : word + '\t' + purpose + '\n';
        }
    }
    void addAll(const Words& words) {
        for (const std::string& word : words) {
            add(word);
        }
    }
    void addFiles() { lines_ += ":file\n"; }

    [[nodiscard]] const std::string& lines() const { return lines_; }

  private:
    std::string beginning_;
    Words words_;
    std::string lines_;
};

// The words of commands that go on as `before` does.
void addNames(const Words& before, Candidates& candidates) {
    for (const Command& command : commands()) {
        const Words name = wordsOf(command.name, ' ');
        const bool goesOn =
            name.size() > before.size() && std::equal(before.begin(), before.end(), name.begin());
        if (goesOn) {
            const bool isWhole = name.size() == before.size() + 1;
            candidates.add(name[before.size()],
                           isWhole ? Texts::of(command.helpKey).toStdString() : std::string());
        }
    }
}

void addValues(std::string_view values, const Words& arguments,
               const SettingValues::Languages& languages, Candidates& candidates) {
    if (values == Argument::kFile) {
        candidates.addFiles();
    } else if (values == Argument::kSetting) {
        for (const std::string_view name : SettingValues::names()) {
            candidates.add(std::string(name));
        }
    } else if (values == Argument::kSettingValue) {
        candidates.addAll(SettingValues::choices(arguments.front(), languages));
    } else if (values != Argument::kNumber) {
        candidates.addAll(wordsOf(values, '|'));
    }
}

// The option that this word is, null when it is none.
const Command::Option* optionOf(const Command& command, const std::string& word) {
    const auto found = std::ranges::find_if(command.options, [&](const Command::Option& option) {
        const Words names = wordsOf(option.names, '|');
        return std::ranges::find(names, word) != names.end();
    });
    return found == command.options.end() ? nullptr : &*found;
}

// What may follow a command and the words after it.
void addRest(const Command& command, const Words& after, const SettingValues::Languages& languages,
             Candidates& candidates) {
    Words arguments;
    std::vector<const Command::Option*> used;
    for (std::size_t i = 0; i < after.size(); ++i) {
        const Command::Option* option = optionOf(command, after[i]);
        if (!option) {
            arguments.push_back(after[i]);
            continue;
        }
        used.push_back(option);
        if (!option->values.empty() && ++i == after.size()) {
            addValues(option->values, arguments, languages, candidates);
            return;
        }
    }
    for (const Command::Option& option : command.options) {
        if (std::ranges::find(used, &option) == used.end()) {
            candidates.addAll(wordsOf(option.names, '|'));
        }
    }
    if (arguments.size() < command.arguments.size()) {
        addValues(command.arguments[arguments.size()].values, arguments, languages, candidates);
    }
}

}  // namespace

std::string completions(const std::vector<std::string>& words,
                        const SettingValues::Languages& languages) {
    Candidates candidates(words.empty() ? std::string() : words.back());
    const Words before(words.begin(), words.empty() ? words.end() : words.end() - 1);
    addNames(before, candidates);
    if (const Command* command = findCommand(before)) {
        const auto nameLength = static_cast<std::ptrdiff_t>(wordsOf(command->name, ' ').size());
        addRest(*command, {before.begin() + nameLength, before.end()}, languages, candidates);
    }
    return candidates.lines();
}

}  // namespace ostrel
