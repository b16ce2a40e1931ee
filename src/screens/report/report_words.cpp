#include "screens/report/report_words.h"

#include <QDate>
#include <QLocale>
#include <QRegularExpression>
#include <QStringList>

#include "screens/report/report_data.h"
#include "screens/texts/texts.h"

namespace ostrel::ReportWords {
namespace {

QDate dateOf(CalendarDay day) {
    return {day.year, day.month, day.day};
}

// The toolkit knows no form without the year: what stands between day and month, with the sign that
// belongs to the last of them ("3月7日").
QString dayMonthFormat() {
    static const QRegularExpression kWeekday(QStringLiteral("dddd?"));
    static const QRegularExpression kDayAndMonth(
        QStringLiteral("(?:d{1,2}.*M{1,4}|M{1,4}.*d{1,2}[日일.]?)"));
    QString format = QLocale().dateFormat(QLocale::LongFormat).remove(kWeekday);
    const QRegularExpressionMatch found = kDayAndMonth.match(format);
    return found.hasMatch() ? found.captured() : QStringLiteral("d MMMM");
}

}  // namespace

QString dayAndMonth(CalendarDay day, Month month) {
    QString format = dayMonthFormat();
    if (month == Month::abbreviated) {
        format.replace(QStringLiteral("MMMM"), QStringLiteral("MMM"));
    }
    return QLocale().toString(dateOf(day), format);
}

QString shortWeekday(CalendarDay day) {
    return QLocale().standaloneDayName(dateOf(day).dayOfWeek(), QLocale::ShortFormat);
}

QString ofDay(const ReportDay& day, CalendarDay today) {
    const QString weekday =
        QLocale().standaloneDayName(dateOf(day.day).dayOfWeek(), QLocale::LongFormat);
    QString date =
        Texts::of("report.date.weekday %@ %@", {weekday, dayAndMonth(day.day, Month::inFull)});
    if (day.day == today) {
        date = Texts::of("report.date.today %@", {date});
    }
    QStringList parts;
    if (day.eye > 0) {
        parts << Texts::of("report.day.eye %lld", {day.eye});
    }
    if (day.body > 0) {
        parts << Texts::of("report.day.body %lld", {day.body});
    }
    if (day.faded > 0) {
        parts << Texts::of("report.day.faded %lld", {day.faded});
    }
    return parts.isEmpty()
               ? Texts::of("report.day.none %@", {date})
               : Texts::of("report.day.some %@ %@", {date, QLocale().createSeparatedList(parts)});
}

}  // namespace ostrel::ReportWords
