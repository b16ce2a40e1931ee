#include "screens/texts/texts.h"

#include <QLocale>
#include <algorithm>
#include <optional>
#include <string>

#include "screens/texts/languages.h"
#include "screens/texts/plural_rules.h"
#include "screens/texts/pseudo_texts.h"
#include "screens/texts/text_table.h"
#include "screens/texts/time_format.h"

namespace ostrel::Texts {
namespace {

enum class Manner { plain, lengthened, mirrored };

struct Current {
    const Language* language = languages().data();
    TextTable table{languages().front().code};
    Manner manner = Manner::plain;
};

Current& current() {
    static Current current;
    return current;
}

const Language* find(std::string_view code) {
    const auto found = std::ranges::find(languages(), code, &Language::code);
    return found == languages().end() ? nullptr : &*found;
}

// The first that the user wants and that is there, else the first of all.
const Language& desktops() {
    for (const QString& wanted : QLocale::system().uiLanguages()) {
        // "de-AT"; the code comes first.
        const QString code = wanted.section(u'-', 0, 0);
        if (const Language* language = find(code.toStdString())) {
            return *language;
        }
    }
    return languages().front();
}

// The desktop's own way to write numbers and times, unless it is in another language.
QLocale localeOf(const Language& language) {
    const QLocale desktop = QLocale::system();
    const QLocale other(
        QString::fromUtf8(language.code.data(), static_cast<qsizetype>(language.code.size())));
    return desktop.language() == other.language() ? desktop : other;
}

QString shown(const Argument& argument) {
    if (const auto* number = std::get_if<std::int64_t>(&argument)) {
        return QLocale().toString(static_cast<qlonglong>(*number));
    }
    return std::get<QString>(argument);
}

// What travels as a text and is a number all the same, such as 12:05.
bool isCountdown(const QString& words) {
    return std::ranges::all_of(
        words, [](QChar letter) { return (letter >= u'0' && letter <= u'9') || letter == u':'; });
}

struct Placeholder {
    qsizetype start = 0;
    qsizetype end = 0;
    std::size_t number = 0;  // 0: the next in order
    bool isWholeNumber = false;
};

// By hand: an engine for regular expressions would cost half a megabyte for good.
std::optional<Placeholder> placeholderAt(QStringView text, qsizetype start) {
    Placeholder found{start, start + 1};
    for (; found.end < text.size() && text[found.end].isDigit(); ++found.end) {
        found.number = found.number * 10 + static_cast<std::size_t>(text[found.end].digitValue());
    }
    if (found.number > 0 && (found.end == text.size() || text[found.end++] != u'$')) {
        return std::nullopt;
    }
    const QStringView kind = text.mid(found.end);
    found.isWholeNumber = kind.startsWith(u"lld");
    if (!found.isWholeNumber && !kind.startsWith(u'@')) {
        return std::nullopt;
    }
    found.end += found.isWholeNumber ? 3 : 1;
    return found;
}

std::optional<Placeholder> nextPlaceholder(QStringView text, qsizetype from) {
    for (qsizetype at = text.indexOf(u'%', from); at >= 0; at = text.indexOf(u'%', at + 1)) {
        if (const auto found = placeholderAt(text, at)) {
            return found;
        }
    }
    return std::nullopt;
}

std::optional<std::string_view> textIn(const TextTable& table, std::string_view language,
                                       std::string_view key, std::span<const Argument> arguments) {
    const auto number = std::ranges::find_if(arguments, [](const Argument& argument) {
        return std::holds_alternative<std::int64_t>(argument);
    });
    if (number != arguments.end()) {
        const auto category = pluralCategory(language, std::get<std::int64_t>(*number));
        if (const auto text = table.find(std::string(key) + '#' + std::string(category))) {
            return text;
        }
    }
    return table.find(key);
}

// In the current language, placeholders and all.
QString translated(std::string_view key, std::span<const Argument> arguments) {
    auto words = textIn(current().table, current().language->code, key, arguments);
    if (!words) {
        static const TextTable kEnglish(languages().front().code);
        words = textIn(kEnglish, languages().front().code, key, arguments);
    }
    const std::string_view found = words.value_or(key);
    QString text = QString::fromUtf8(found.data(), static_cast<qsizetype>(found.size()));
    switch (current().manner) {
        case Manner::lengthened:
            return PseudoTexts::lengthened(text);
        case Manner::mirrored:
            return PseudoTexts::mirrored(text);
        case Manner::plain:
            break;
    }
    return text;
}

}  // namespace

void setLanguage(std::string_view code) {
    const Language* chosen = code == "system" ? &desktops() : find(code);
    const Language& found = chosen ? *chosen : languages().front();
    if (current().language != &found) {
        current().language = &found;
        current().table = TextTable(found.code);
    }
    current().manner = code == "en-XA"   ? Manner::lengthened
                       : code == "ar-XB" ? Manner::mirrored
                                         : Manner::plain;
    QLocale::setDefault(localeOf(*current().language));
}

std::string_view language() {
    return current().language->code;
}

bool isRightToLeft() {
    return current().language->isRightToLeft || current().manner == Manner::mirrored;
}

QString of(std::string_view key, std::initializer_list<Argument> arguments) {
    const std::span<const Argument> all(arguments.begin(), arguments.size());
    return fill(translated(key, all), all);
}

QString of(const LocalizedText& text) {
    const QString key = QString::fromStdString(text.key);
    std::vector<Argument> arguments;
    auto next = nextPlaceholder(key, 0);
    for (const std::string& argument : text.args) {
        const QString words = QString::fromStdString(argument);
        const bool isNumber = next && next->isWholeNumber;
        arguments.push_back(isNumber ? Argument(std::int64_t{words.toLongLong()})
                                     : Argument(isCountdown(words) ? localDigits(words) : words));
        next = next ? nextPlaceholder(key, next->end) : std::nullopt;
    }
    return fill(translated(text.key, arguments), arguments);
}

QString fill(const QString& text, std::span<const Argument> arguments) {
    if (arguments.empty()) {
        return text;
    }
    QString filled;
    qsizetype copiedTo = 0;
    std::size_t inOrder = 0;
    for (auto next = nextPlaceholder(text, 0); next; next = nextPlaceholder(text, next->end)) {
        const std::size_t index = next->number > 0 ? next->number - 1 : inOrder++;
        filled += QStringView(text).mid(copiedTo, next->start - copiedTo);
        filled += index < arguments.size() ? shown(arguments[index])
                                           : text.mid(next->start, next->end - next->start);
        copiedTo = next->end;
    }
    filled += QStringView(text).mid(copiedTo);
    return filled;
}

}  // namespace ostrel::Texts
