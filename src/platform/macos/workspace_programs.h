#pragma once

#include <optional>
#include <string>
#include <vector>

namespace ostrel {

// The bundle identifiers of the programs that the user can have in front, this one left out.
[[nodiscard]] std::vector<std::string> runningPrograms();

// What the user's system calls a program; absent unless it runs.
[[nodiscard]] std::optional<std::string> runningProgramName(const std::string& identifier);

}  // namespace ostrel
