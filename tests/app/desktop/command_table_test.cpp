#include "app/desktop/command_table.h"

#include <gtest/gtest.h>

#include "app/desktop/command_completion.h"

namespace ostrel {
namespace {

using Words = std::vector<std::string>;

// The command's name with what was given to it, or the key of the problem.
std::string parsed(const std::string& text) {
    const CommandLine line = parseCommandLine(wordsOf(text, ' '));
    if (!line.command) {
        return line.problem.key;
    }
    std::string all(line.command->name);
    for (const auto& [option, value] : line.options) {
        all += " " + option + (value.empty() ? "" : "=" + value);
    }
    for (const std::string& argument : line.arguments) {
        all += " <" + argument + ">";
    }
    return all;
}

TEST(CommandTable, TakesACommandLineApart) {
    const std::pair<const char*, const char*> cases[] = {
        {"status --watch --compact", "status --compact --watch"},
        {"status --json --json", "cli.error.unexpected %@ %@"},
        {"status --capabilities --json", "cli.error.unexpected %@ %@"},
        {"pause 30m", "pause <30m>"},
        {"report --range monthly --csv", "report --csv --range=monthly"},
        {"report --range=full", "report --range=full"},
        {"report --range full --range weekly", "cli.error.unexpected %@ %@"},
        {"settings set dailyGoalBreaks -1", "settings set <dailyGoalBreaks> <-1>"},
        {"settings import -", "settings import <->"},
        {"settings import -- --odd", "settings import <--odd>"},
        {"simulate --seed 5 day.json", "simulate --seed=5 <day.json>"},
        {"simulate --seed=5 -", "simulate --seed=5 <->"},
        {"simulate --seed day.json", "cli.error.missing %@"},
        {"simulate one.json two.json", "cli.error.unexpected %@ %@"},
        {"--demo --screenshots x", "--demo --screenshots=x"},
        {"--screenshots=x --demo", "--demo --screenshots=x"},
        {"--screenshots", "cli.error.screenshots"},
    };
    for (const auto& [words, expected] : cases) {
        EXPECT_EQ(parsed(words), expected) << words;
    }
}

// The words alone.
Words offered(const Words& words) {
    Words found;
    for (const std::string& line : wordsOf(completions(words, {"en", "de"}), '\n')) {
        found.push_back(line.substr(0, line.find('\t')));
    }
    return found;
}

TEST(CommandTable, CompletionsAreWhatMayFollow) {
    EXPECT_EQ(offered({"p"}), (Words{"pause", "postpone"}));
    EXPECT_EQ(offered({"break", ""}), (Words{"eye", "body"}));
    EXPECT_EQ(offered({"status", "--"}),
              (Words{"--capabilities", "--json", "--compact", "--watch"}));
    EXPECT_EQ(offered({"status", "--json", "--"}), (Words{"--watch"}));
    EXPECT_EQ(offered({"report", "--range", "m"}), (Words{"monthly"}));
    EXPECT_EQ(offered({"report", "--range", "monthly", ""}), (Words{"--json", "--csv"}));
    EXPECT_EQ(offered({"settings", "get", "overlayT"}), (Words{"overlayTint"}));
    EXPECT_EQ(offered({"settings", "set", "overlayTint", ""}),
              (Words{"ink", "black", "navy", "sage"}));
    EXPECT_EQ(offered({"settings", "set", "languageRaw", "d"}), (Words{"de"}));
    EXPECT_EQ(offered({"simulate", "--seed", ""}), Words{});
    EXPECT_EQ(offered({"simulate", "--seed", "5", ""}), (Words{":file"}));
    EXPECT_EQ(offered({"--demo", ""}), (Words{"--screenshots"}));
    EXPECT_EQ(offered({"nap", ""}), Words{});
}

}  // namespace
}  // namespace ostrel
