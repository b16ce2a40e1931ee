#include "screens/countdown_label.h"

#include "menubar/menu_bar_formatter.h"
#include "screens/texts/time_format.h"

namespace ostrel {

QString countdownLabel(std::int64_t seconds) {
    return Texts::localDigits(QString::fromStdString(MenuBarFormatter::countdownText(seconds)));
}

}  // namespace ostrel
