#include "base/day_key.h"

#include <array>
#include <cstdio>

namespace ostrel {

std::string dayKey(CalendarDay day) {
    std::array<char, 40> text{};
    const int length =
        std::snprintf(text.data(), text.size(), "%04d-%02d-%02d", day.year, day.month, day.day);
    return {text.data(), static_cast<std::size_t>(length)};
}

}  // namespace ostrel
