#include "screens/texts/pseudo_texts.h"

#include <QRegularExpression>

namespace ostrel::PseudoTexts {
namespace {

constexpr QStringView kPlain = u"aceinosuyACEINOSUY";
constexpr QStringView kAccented = u"áçéíñóšúýÁÇÉÍÑÓŠÚÝ";

QChar accented(QChar letter) {
    const auto index = kPlain.indexOf(letter);
    return index < 0 ? letter : kAccented[index];
}

}  // namespace

QString lengthened(const QString& text) {
    constexpr int kPercent = 40;
    static const QRegularExpression kToken(QStringLiteral("%(?:\\d+\\$)?(?:lld|@)|."),
                                           QRegularExpression::DotMatchesEverythingOption);
    QString longer;
    int owed = 0;
    for (auto tokens = kToken.globalMatch(text); tokens.hasNext();) {
        const QString token = tokens.next().captured();
        if (token.size() > 1) {
            longer += token;
            continue;
        }
        longer += accented(token.front());
        owed += kPercent;
        if (owed >= 100 && token.front().isLetter()) {
            owed -= 100;
            longer += accented(token.front());
        }
    }
    return longer;
}

QString mirrored(const QString& text) {
    constexpr QChar kRightToLeftMark(0x200F);
    return kRightToLeftMark + text + kRightToLeftMark;
}

}  // namespace ostrel::PseudoTexts
