#include "screens/texts.h"

#include <QLocale>
#include <QRegularExpression>
#include <algorithm>

namespace ostrel::Texts {
namespace {

QString shown(const Argument& argument) {
    if (const auto* number = std::get_if<std::int64_t>(&argument)) {
        return QLocale().toString(static_cast<qlonglong>(*number));
    }
    return std::get<QString>(argument);
}

}  // namespace

QString of(std::string_view key, std::initializer_list<Argument> arguments) {
    const auto table = english();
    const auto entry = std::find_if(table.begin(), table.end(),
                                    [key](const Entry& candidate) { return candidate.key == key; });
    const std::string_view text = entry == table.end() ? key : entry->text;
    return fill(QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())), arguments);
}

QString fill(const QString& text, std::initializer_list<Argument> arguments) {
    if (arguments.size() == 0) {
        return text;
    }
    static const QRegularExpression kPlaceholder(QStringLiteral("%(?:(\\d+)\\$)?(?:lld|@)"));
    QString filled;
    qsizetype copiedTo = 0;
    std::size_t inOrder = 0;
    for (auto found = kPlaceholder.globalMatch(text); found.hasNext();) {
        const QRegularExpressionMatch match = found.next();
        const std::size_t index = match.hasCaptured(1) && !match.captured(1).isEmpty()
                                      ? match.captured(1).toULongLong() - 1
                                      : inOrder++;
        filled += QStringView(text).mid(copiedTo, match.capturedStart() - copiedTo);
        filled += index < arguments.size() ? shown(arguments.begin()[index]) : match.captured();
        copiedTo = match.capturedEnd();
    }
    filled += QStringView(text).mid(copiedTo);
    return filled;
}

}  // namespace ostrel::Texts
