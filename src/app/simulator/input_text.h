#pragma once

#include <optional>
#include <string>

namespace ostrel {

// All of a file, or of standard input for "-"; absent when it cannot be read.
[[nodiscard]] std::optional<std::string> readInput(const std::string& path);

}  // namespace ostrel
