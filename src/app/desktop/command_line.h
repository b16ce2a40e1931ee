#pragma once

#include <string>
#include <vector>

namespace ostrel {

// Does what the words after the program's name ask for. Returns the exit status.
[[nodiscard]] int runCommandLine(int& argc, char** argv, const std::vector<std::string>& words,
                                 const char* version);

}  // namespace ostrel
