#pragma once

#include <QString>

namespace ostrel::Texts {

// How the language writes hours and minutes, for QLocale::toString().
[[nodiscard]] QString timeFormat();

}  // namespace ostrel::Texts
