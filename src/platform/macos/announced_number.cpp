#include "platform/macos/announced_number.h"

#include <cmath>

namespace ostrel {

DistributedAnnouncements::Value announcedNumber(char encoding, std::int64_t whole, double real) {
    const bool isReal = encoding == 'f' || encoding == 'd';
    const bool isLargeUnsigned = encoding == 'Q' && whole < 0;
    const bool isWhole = std::trunc(real) == real && real >= -0x1p63 && real < 0x1p63;
    if (isLargeUnsigned || (isReal && !isWhole)) {
        return std::monostate{};
    }
    return isReal ? static_cast<std::int64_t>(real) : whole;
}

}  // namespace ostrel
