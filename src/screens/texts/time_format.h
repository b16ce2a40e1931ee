#pragma once

#include <QString>

namespace ostrel::Texts {

// How the language writes hours and minutes, for QLocale::toString().
[[nodiscard]] QString timeFormat();

// Numbers that others have written with 0 to 9, in the digits of the language.
[[nodiscard]] QString localDigits(QString text);

}  // namespace ostrel::Texts
