#include "platform/api/iso_time.h"

#include <array>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstdio>

#include "platform/api/calendar.h"

namespace ostrel {

using std::chrono::seconds;

std::string isoLocalTime(const Calendar& calendar, WallTime time) {
    double whole = std::floor(secondsSinceReference(time));
    std::int64_t milliseconds = 0;
    if (std::isfinite(whole)) {
        milliseconds = std::llround((secondsSinceReference(time) - whole) * 1000);
    }
    if (milliseconds == 1000) {
        milliseconds = 0;
        whole += 1;
    }
    const Calendar::Components local = calendar.components(wallTimeAt(whole));
    const std::int64_t offsetSec = calendar.utcOffsetSec(wallTimeAt(whole));
    const auto offset = std::chrono::hh_mm_ss{seconds{offsetSec < 0 ? -offsetSec : offsetSec}};

    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "T%02d:%02d:%02d", local.hour, local.minute,
                  local.second);
    std::string result = dayKey(local.day) + text.data();
    if (milliseconds != 0) {
        std::snprintf(text.data(), text.size(), ".%03d", static_cast<int>(milliseconds));
        result += text.data();
    }
    std::snprintf(text.data(), text.size(), "%c%02d:%02d", offsetSec < 0 ? '-' : '+',
                  static_cast<int>(offset.hours().count()),
                  static_cast<int>(offset.minutes().count()));
    result += text.data();
    // Zones before the first standard times differ from UTC by odd seconds.
    if (offset.seconds() != seconds{0}) {
        std::snprintf(text.data(), text.size(), ":%02d",
                      static_cast<int>(offset.seconds().count()));
        result += text.data();
    }
    return result;
}

}  // namespace ostrel
