#pragma once

namespace ostrel {

// `ostrel status --capabilities`: prints what works on the desktop at hand. Returns the exit
// status.
[[nodiscard]] int runStatusCommand(int& argc, char** argv);

}  // namespace ostrel
