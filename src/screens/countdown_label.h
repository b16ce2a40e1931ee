#pragma once

#include <QString>
#include <cstdint>

namespace ostrel {

// The time that is left, such as 12:05, in the digits of the language.
[[nodiscard]] QString countdownLabel(std::int64_t seconds);

}  // namespace ostrel
