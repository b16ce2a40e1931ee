#pragma once

#include <QString>
#include <cstdint>

class QTime;

namespace ostrel::Texts {

// How the language writes hours and minutes, for QLocale::toString().
[[nodiscard]] QString timeFormat();

// A time as the language writes it: "14:05", "2:05 PM".
[[nodiscard]] QString timeOfDay(const QTime& time);

// So many minutes after midnight, on whatever day.
[[nodiscard]] QString timeOfMinute(std::int64_t minute);

// Numbers that others have written with 0 to 9, in the digits of the language.
[[nodiscard]] QString localDigits(QString text);

}  // namespace ostrel::Texts
