#include "screens/texts.h"

#include <QLocale>
#include <QRegularExpression>
#include <algorithm>
#include <optional>
#include <string>

#include "screens/pseudo_texts.h"

namespace ostrel::Texts {
namespace {

enum class Language { english, longer, mirrored };

Language& language() {
    static Language current = Language::english;
    return current;
}

QString shown(const Argument& argument) {
    if (const auto* number = std::get_if<std::int64_t>(&argument)) {
        return QLocale().toString(static_cast<qlonglong>(*number));
    }
    return std::get<QString>(argument);
}

const QRegularExpression& placeholder() {
    static const QRegularExpression kPlaceholder(QStringLiteral("%(?:(\\d+)\\$)?(?:lld|@)"));
    return kPlaceholder;
}

std::optional<std::string_view> find(std::string_view key) {
    const auto table = english();
    const auto entry = std::ranges::find(table, key, &Entry::key);
    return entry == table.end() ? std::nullopt : std::optional(entry->text);
}

// English tells one from all other numbers.
std::string_view pluralCategory(std::int64_t number) {
    return number == 1 ? "one" : "other";
}

std::string_view textFor(std::string_view key, std::span<const Argument> arguments) {
    const auto number = std::ranges::find_if(arguments, [](const Argument& argument) {
        return std::holds_alternative<std::int64_t>(argument);
    });
    if (number != arguments.end()) {
        const auto category = pluralCategory(std::get<std::int64_t>(*number));
        if (const auto text = find(std::string(key) + '#' + std::string(category))) {
            return *text;
        }
    }
    return find(key).value_or(key);
}

// In the current language, placeholders and all.
QString translated(std::string_view key, std::span<const Argument> arguments) {
    const std::string_view english = textFor(key, arguments);
    QString text = QString::fromUtf8(english.data(), static_cast<qsizetype>(english.size()));
    switch (language()) {
        case Language::longer:
            return PseudoTexts::lengthened(text);
        case Language::mirrored:
            return PseudoTexts::mirrored(text);
        case Language::english:
            break;
    }
    return text;
}

}  // namespace

void setLanguage(std::string_view code) {
    language() = code == "en-XA"   ? Language::longer
                 : code == "ar-XB" ? Language::mirrored
                                   : Language::english;
}

bool isRightToLeft() {
    return language() == Language::mirrored;
}

QString of(std::string_view key, std::initializer_list<Argument> arguments) {
    const std::span<const Argument> all(arguments.begin(), arguments.size());
    return fill(translated(key, all), all);
}

QString of(const LocalizedText& text) {
    const auto placeholders = placeholder().globalMatch(QString::fromStdString(text.key));
    std::vector<Argument> arguments;
    auto next = placeholders;
    for (const std::string& argument : text.args) {
        const QString words = QString::fromStdString(argument);
        const bool isNumber = next.hasNext() && next.next().captured().endsWith(u"lld");
        arguments.push_back(isNumber ? Argument(std::int64_t{words.toLongLong()})
                                     : Argument(words));
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
    for (auto found = placeholder().globalMatch(text); found.hasNext();) {
        const QRegularExpressionMatch match = found.next();
        const std::size_t index = match.hasCaptured(1) && !match.captured(1).isEmpty()
                                      ? match.captured(1).toULongLong() - 1
                                      : inOrder++;
        filled += QStringView(text).mid(copiedTo, match.capturedStart() - copiedTo);
        filled += index < arguments.size() ? shown(arguments[index]) : match.captured();
        copiedTo = match.capturedEnd();
    }
    filled += QStringView(text).mid(copiedTo);
    return filled;
}

}  // namespace ostrel::Texts
