#pragma once

#include <string>

#include "base/clock.h"

namespace ostrel {

class Calendar;

// `time` as ISO 8601 with the offset of the calendar's zone, "2026-03-09T09:15:10+01:00", and with
// milliseconds ("09:15:10.500") where it is not a whole second.
[[nodiscard]] std::string isoLocalTime(const Calendar& calendar, WallTime time);

}  // namespace ostrel
