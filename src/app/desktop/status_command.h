#pragma once

#include <string>
#include <vector>

namespace ostrel {

// `ostrel status ARGUMENT...`: prints what it is asked for. Returns the exit status: 2 for
// arguments that it does not know.
[[nodiscard]] int runStatusCommand(int& argc, char** argv,
                                   const std::vector<std::string>& arguments);

}  // namespace ostrel
