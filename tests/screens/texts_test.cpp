#include "screens/texts/texts.h"
#include "screens/texts/languages.h"
#include "screens/texts/plural_rules.h"
#include "screens/texts/text_table.h"
#include "screens/texts/toolkit_texts.h"

#include <QFile>
#include <QLibraryInfo>
#include <QRegularExpression>
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <set>
#include <vector>

#include "overlay/guided_moves.h"
#include "platform/api/capability.h"
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

// The categories that whole numbers fall into beside the one without a name.
std::set<std::string> categoriesOf(std::string_view language) {
    std::set<std::string> categories;
    for (std::int64_t number = 0; number <= 200; ++number) {
        categories.emplace(Texts::pluralCategory(language, number));
    }
    // What the texts under the keys alone are for.
    const bool isManyTheRest = language == "ru" || language == "uk" || language == "pl";
    categories.erase(isManyTheRest ? "many" : "other");
    return categories;
}

// One text a line. Of two under one key the table has one.
std::ptrdiff_t linesOf(std::string_view language) {
    std::ifstream file(std::string(OSTREL_SOURCES) + "/../resources/texts/" +
                       std::string(language) + ".json");
    const std::string text{std::istreambuf_iterator<char>(file), {}};
    return static_cast<std::ptrdiff_t>(matches(text, "\n  (\")").size());
}

TEST(Texts, EveryLanguageHasEveryTextWithItsArgumentsAndItsPlurals) {
    const Texts::TextTable english("en");
    for (const Texts::Language& language : Texts::languages()) {
        const Texts::TextTable own(language.code);
        EXPECT_EQ(std::ssize(own.entries()), linesOf(language.code)) << language.code << ": twice?";
        for (const auto& [key, text] : own.entries()) {
            Strings expected = placeholders(key);
            Strings found = placeholders(text);
            // One that stands for a single number may say it in words.
            if (key.find('#') != std::string_view::npos && found.size() + 1 == expected.size()) {
                found.emplace_back("lld");
                std::ranges::sort(found);
            }
            EXPECT_EQ(found, expected) << language.code << " " << key;
            EXPECT_FALSE(text.empty() || text.front() == ' ' || text.back() == ' ')
                << language.code << " " << key << " is glued to something";
            EXPECT_TRUE(english.find(key.substr(0, key.find('#'))))
                << language.code << " " << key << " is unknown";
        }
        for (const auto& [key, text] : english.entries()) {
            if (!key.ends_with("#one")) {
                EXPECT_TRUE(own.find(key)) << language.code << " lacks " << key;
                continue;
            }
            for (const std::string& category : categoriesOf(language.code)) {
                const std::string wanted(key.substr(0, key.find('#') + 1));
                EXPECT_TRUE(own.find(wanted + category))
                    << language.code << " lacks " << wanted << category;
            }
        }
    }
}

TEST(Texts, EveryKeyThatTheScreensUseIsInTheTableAndEveryTextIsUsed) {
    const std::filesystem::path source = OSTREL_SOURCES;
    std::set<std::string> used;
    const auto isRead = [](const std::filesystem::path& file) {
        return file.extension() == ".cpp" && file.parent_path().filename() != "simulator";
    };
    for (const auto& file : std::filesystem::recursive_directory_iterator(source)) {
        if (!isRead(file.path())) {
            continue;
        }
        std::ifstream stream(file.path());
        const std::string code{std::istreambuf_iterator<char>(stream), {}};
        for (const auto& key :
             matches(code,
                     "\"((?:overlay|action|key|menubar|notice|state|gentle|toast|"
                     "notification|capability|settings|cli|report|welcome|about|crash|preset|label)"
                     "\\.[a-z_0-9.]+(?: %(?:lld|@))*)\"")) {
            const bool isObjectName = key.starts_with("toast.surface") || key.ends_with('.');
            if (!isObjectName) {
                used.insert(key);
            }
        }
    }
    for (const auto kind : {BreakLogEntry::Kind::eye, BreakLogEntry::Kind::body}) {
        for (const GuidedMove& move : GuidedMoveCatalog::moves(kind)) {
            used.insert({move.title, move.instruction});
        }
    }
    const auto useEach = [&used](const char* prefix, const auto& names) {
        for (const std::string_view name : names) {
            used.insert(prefix + std::string(name));
        }
    };
    useEach("capability.topic.", enumNames(Capability::Topic{}));
    useEach("capability.state.", enumNames(Capability::State{}));
    std::set<std::string> known;
    const Texts::TextTable english("en");
    for (const auto& entry : english.entries()) {
        known.emplace(entry.key.substr(0, entry.key.find('#')));
    }
    EXPECT_EQ(used, known);
}

TEST(Texts, NumbersFallIntoThePluralCategoriesOfTheLanguage) {
    // Of 0, 1, 2, 5, 11, 21, 22, 100, 101 and 103.
    const std::pair<const char*, const char*> cases[] = {
        {"en de nl it es tr", "other one other other other other other other other other"},
        {"fr pt hi", "one one other other other other other other other other"},
        {"ru uk", "many one few many many one few many one few"},
        {"pl", "many one few many many many few many many few"},
        {"ar", "zero one two few many many many other other few"},
        {"ja ko zh", "other other other other other other other other other other"},
    };
    for (const auto& [languages, categories] : cases) {
        for (const QString& language : QString::fromUtf8(languages).split(u' ')) {
            QStringList found;
            for (const std::int64_t number : {0, 1, 2, 5, 11, 21, 22, 100, 101, 103}) {
                found << QString::fromStdString(
                    std::string(Texts::pluralCategory(language.toStdString(), number)));
            }
            EXPECT_EQ(found.join(u' '), QString::fromUtf8(categories)) << language.toStdString();
        }
    }
}

TEST(Texts, FillsPlaceholdersInTheOrderThatTheTextAsksFor) {
    const std::pair<const char*, const char*> cases[] = {
        {"%@ has %lld", "Anna has 7"}, {"%2$lld of %1$@", "7 of Anna"},  {"nothing", "nothing"},
        {"%@ %lld %@", "Anna 7 %@"},   {"100 % of %@", "100 % of Anna"},
    };
    const Texts::Argument kArguments[] = {QStringLiteral("Anna"), std::int64_t{7}};
    for (const auto& [text, filled] : cases) {
        EXPECT_EQ(Texts::fill(QString::fromUtf8(text), kArguments), QString::fromUtf8(filled));
    }
    // An argument is no text to be filled.
    const Texts::Argument kOdd[] = {QStringLiteral("%@"), QStringLiteral("b")};
    EXPECT_EQ(Texts::fill(QStringLiteral("%@ %@"), kOdd), QStringLiteral("%@ b"));
}

TEST(Texts, TheToolkitsWordsFollowTheLanguageWhereTheyAreInstalled) {
    const QString folder = QLibraryInfo::path(QLibraryInfo::TranslationsPath);
    if (!QFile::exists(folder + QStringLiteral("/qtbase_de.qm"))) {
        GTEST_SKIP() << "they are not installed";
    }
    const auto cancel = [] { return QCoreApplication::translate("QPlatformTheme", "Cancel"); };
    {
        Texts::ToolkitTexts toolkit;
        const std::pair<const char*, const char*> cases[] = {
            {"de", "Abbrechen"}, {"pt", "Cancelar"}, {"zh", "取消"},
            {"hi", "Cancel"},  // there is none
            {"fr", "Annuler"},   {"en", "Cancel"},   {"de", "Abbrechen"}};
        for (const auto& [language, word] : cases) {
            toolkit.setLanguage(language);
            EXPECT_EQ(cancel(), QString::fromUtf8(word)) << language;
        }
    }
    EXPECT_EQ(cancel(), QStringLiteral("Cancel"));
}

TEST(Texts, WithoutTheToolkitsWordsItSpeaksEnglish) {
    Texts::ToolkitTexts toolkit(QStringLiteral("/nonexistent"));
    toolkit.setLanguage("de");
    EXPECT_EQ(QCoreApplication::translate("QPlatformTheme", "Cancel"), QStringLiteral("Cancel"));
}

TEST(Texts, NumbersChooseTheirWordsAndAKeyWithoutATextStandsForItself) {
    EXPECT_EQ(Texts::of({"toast.merged %lld", {"1"}}),
              "Your eye break joins the body break in a minute");
    EXPECT_EQ(Texts::of({"notification.day_end.body %lld %lld", {"1", "6"}}),
              "You took 1 break; your goal is 6.");
    EXPECT_EQ(Texts::of({"%@", {"100 % sure, 7 %lld"}}), "100 % sure, 7 %lld");
}

}  // namespace ostrel
