#pragma once

namespace ostrel {

struct CommandLine;

// `ostrel simulate [--seed N] SCENARIO.json|-`: prints what happens in the scenario on standard
// output. Returns the exit status: for a scenario that cannot be used ExitStatus::kUsage, with one
// line on standard error and nothing on standard output.
[[nodiscard]] int runSimulateCommand(const CommandLine& line);

}  // namespace ostrel
