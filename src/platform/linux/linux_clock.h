#pragma once

#include <string>

#include "base/clock.h"

namespace ostrel {

// The system's wall clock.
[[nodiscard]] WallTime systemWallTime();

// The IANA name of the user's zone, as it is now: that of TZ, else of the system's setting. Cheap
// enough to be asked at every use of a calendar.
[[nodiscard]] std::string systemTimeZone();

}  // namespace ostrel
