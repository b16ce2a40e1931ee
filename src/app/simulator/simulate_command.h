#pragma once

#include <string>
#include <vector>

namespace ostrel {

// `ostrel simulate [--seed N] SCENARIO.json|-`: prints what happens in the scenario on standard
// output. Returns the exit status: 2, with one line on standard error and nothing on standard
// output, for wrong usage or a scenario that cannot be used.
[[nodiscard]] int runSimulateCommand(const std::vector<std::string>& arguments);

}  // namespace ostrel
