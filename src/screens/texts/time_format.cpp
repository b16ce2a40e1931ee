#include "screens/texts/time_format.h"

#include <QLocale>

namespace ostrel::Texts {

// Some locales have seconds even in the short form.
QString timeFormat() {
    return QLocale().timeFormat(QLocale::ShortFormat).remove(QStringLiteral(":ss"));
}

}  // namespace ostrel::Texts
