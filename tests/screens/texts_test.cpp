#include "screens/texts.h"

#include <QRegularExpression>
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <vector>

#include "screens/gui.h"

namespace ostrel {

using Strings = std::vector<std::string>;

// What the pattern's first group caught, each time.
Strings matches(const std::string& text, const char* pattern) {
    Strings found;
    const QRegularExpression expression(QString::fromUtf8(pattern));
    for (auto it = expression.globalMatch(QString::fromStdString(text)); it.hasNext();) {
        found.push_back(it.next().captured(1).toStdString());
    }
    return found;
}

Strings placeholders(std::string_view text) {
    Strings found = matches(std::string(text), "%(?:\\d\\$)?(lld|@)");
    std::sort(found.begin(), found.end());
    return found;
}

TEST(Texts, EveryTextTakesTheArgumentsItsKeyNamesAndIsThereOnce) {
    std::set<std::string_view> keys;
    for (const auto& [key, text] : Texts::english()) {
        EXPECT_EQ(placeholders(key), placeholders(text)) << key;
        EXPECT_TRUE(keys.insert(key).second) << key << " is there twice";
        EXPECT_FALSE(text.empty() || text.front() == ' ' || text.back() == ' ')
            << key << " is glued to something";
    }
}

TEST(Texts, EveryKeyThatTheScreensUseIsInTheTableAndEveryTextIsUsed) {
    const auto screens = std::filesystem::path(__FILE__).parent_path() / "../../src/screens";
    std::set<std::string> used;
    for (const auto& file : std::filesystem::directory_iterator(screens)) {
        if (file.path().filename() == "english_texts.cpp") {
            continue;
        }
        std::ifstream stream(file.path());
        const std::string source{std::istreambuf_iterator<char>(stream), {}};
        for (const auto& key : matches(source,
                                       "\"((?:overlay|action|key|menubar|notice|state)\\.[a-z_0-9.]"
                                       "+(?: %(?:lld|@))*)\"")) {
            used.insert(key);
        }
    }
    std::set<std::string> known;
    for (const auto& entry : Texts::english()) {
        known.emplace(entry.key);
    }
    EXPECT_EQ(used, known);
}

TEST(Texts, FillsPlaceholdersInTheOrderThatTheTextAsksFor) {
    const struct {
        const char* text;
        const char* filled;
    } cases[] = {
        {"%@ has %lld", "Anna has 7"}, {"%2$lld of %1$@", "7 of Anna"},  {"nothing", "nothing"},
        {"%@ %lld %@", "Anna 7 %@"},   {"100 % of %@", "100 % of Anna"},
    };
    for (const auto& [text, filled] : cases) {
        EXPECT_EQ(Texts::fill(QString::fromUtf8(text), {QStringLiteral("Anna"), std::int64_t{7}}),
                  QString::fromUtf8(filled));
    }
    // An argument is no text to be filled.
    EXPECT_EQ(Texts::fill(QStringLiteral("%@ %@"), {QStringLiteral("%@"), QStringLiteral("b")}),
              QStringLiteral("%@ b"));
}

TEST(Texts, AKeyWithoutATextStandsForItself) {
    EXPECT_EQ(Texts::of("no.such.key"), QStringLiteral("no.such.key"));
}

}  // namespace ostrel
