#pragma once

#include <cmath>
#include <cstdint>

#include "base/fatal.h"

// Arithmetic on second counts. A result that does not fit 64 bits is a fatal error, never a wrap.
namespace ostrel {

[[nodiscard]] inline std::int64_t addSec(std::int64_t a, std::int64_t b) {
    std::int64_t sum = 0;
    if (__builtin_add_overflow(a, b, &sum)) {
        fatal("second count overflow in an addition");
    }
    return sum;
}

[[nodiscard]] inline std::int64_t subtractSec(std::int64_t a, std::int64_t b) {
    std::int64_t difference = 0;
    if (__builtin_sub_overflow(a, b, &difference)) {
        fatal("second count overflow in a subtraction");
    }
    return difference;
}

[[nodiscard]] inline std::int64_t multiplySec(std::int64_t a, std::int64_t b) {
    std::int64_t product = 0;
    if (__builtin_mul_overflow(a, b, &product)) {
        fatal("second count overflow in a multiplication");
    }
    return product;
}

// `seconds` cut towards zero. Not finite or out of range is fatal.
[[nodiscard]] inline std::int64_t wholeSec(double seconds) {
    const double whole = std::trunc(seconds);
    if (!(whole >= -0x1p63 && whole < 0x1p63)) {
        fatal("a number of seconds does not fit 64 bits");
    }
    return static_cast<std::int64_t>(whole);
}

}  // namespace ostrel
