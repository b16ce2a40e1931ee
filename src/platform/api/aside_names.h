#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace ostrel {

// The names under which bytes that could not be used are kept beside their key: "KEY.damaged", then
// "KEY.damaged-b" and so on to "-z", "-aa". Letters, lest it be taken for the number of a version.
inline constexpr int kMostSetAside = 26 * 27;

// What is put after the key. `count` is how many there are already, below kMostSetAside.
[[nodiscard]] std::string asideSuffix(int count);

// The first of them that is not taken, or the last where all are.
[[nodiscard]] std::string freeAsideName(std::string_view key,
                                        const std::function<bool(const std::string&)>& isTaken);

[[nodiscard]] bool isAsideName(std::string_view key);

}  // namespace ostrel
