#pragma once

#include <QString>

#include "base/day_key.h"

namespace ostrel {

struct ReportDay;

// What the report says of days, in the language of the texts.
namespace ReportWords {

// "3 March", as the language orders it; `short` months are abbreviated.
enum class Month { inFull, abbreviated };
[[nodiscard]] QString dayAndMonth(CalendarDay day, Month month);

// "Mon", or what there is room for below a bar.
[[nodiscard]] QString shortWeekday(CalendarDay day);

// "Monday, 3 March: 5 eye breaks, 2 body breaks"; says of today that it is.
[[nodiscard]] QString ofDay(const ReportDay& day, CalendarDay today);

}  // namespace ReportWords
}  // namespace ostrel
