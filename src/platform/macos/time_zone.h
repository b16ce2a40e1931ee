#pragma once

#include <string>

namespace ostrel {

// The IANA name of the user's zone, as it is now. Cheap enough to be asked at every use of a
// calendar.
[[nodiscard]] std::string macTimeZone();

// Foundation remembers the zone until it is told that there is another one.
void forgetMacTimeZone();

}  // namespace ostrel
