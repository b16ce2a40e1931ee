#pragma once

#include <cstdint>
#include <optional>

namespace ostrel {

// Whether the keyboard goes back to the program that had it: not when the user has turned to yet
// another one meanwhile, nor when it was ours before. Processes, absent where there is none.
[[nodiscard]] constexpr bool owesKeyboard(std::optional<std::int64_t> lender, std::int64_t own,
                                          std::optional<std::int64_t> frontmost) {
    return lender && *lender != own && frontmost == own;
}

}  // namespace ostrel
