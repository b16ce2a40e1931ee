#include "screens/texts/time_format.h"

#include <QLocale>
#include <QTime>

namespace ostrel::Texts {

// Some locales have seconds even in the short form.
QString timeFormat() {
    return QLocale().timeFormat(QLocale::ShortFormat).remove(QStringLiteral(":ss"));
}

QString timeOfDay(const QTime& time) {
    return QLocale().toString(time, timeFormat());
}

QString timeOfMinute(std::int64_t minute) {
    constexpr std::int64_t kDay = 1440;
    constexpr int kMinuteSec = 60;
    return timeOfDay(QTime(0, 0).addSecs(static_cast<int>(minute % kDay) * kMinuteSec));
}

QString localDigits(QString text) {
    const char16_t zero = QLocale().zeroDigit().front().unicode();
    for (QChar& letter : text) {
        if (letter >= u'0' && letter <= u'9') {
            letter = QChar(static_cast<char16_t>(zero + (letter.unicode() - u'0')));
        }
    }
    return text;
}

}  // namespace ostrel::Texts
