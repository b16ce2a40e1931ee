#include "screens/texts.h"

#include <QLocale>
#include <QRegularExpression>
#include <algorithm>
#include <optional>
#include <string>

namespace ostrel::Texts {
namespace {

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

}  // namespace

QString of(std::string_view key, std::initializer_list<Argument> arguments) {
    const std::span<const Argument> all(arguments.begin(), arguments.size());
    const std::string_view text = textFor(key, all);
    return fill(QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())), all);
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
    const std::string_view translated = textFor(text.key, arguments);
    return fill(QString::fromUtf8(translated.data(), static_cast<qsizetype>(translated.size())),
                arguments);
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
