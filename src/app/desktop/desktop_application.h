#pragma once

#include "app/desktop/desktop_options.h"

namespace ostrel {

// Runs the application on the display at hand until it is told to quit. Returns the exit status.
[[nodiscard]] int runDesktopApplication(int& argc, char** argv, const DesktopOptions& options);

}  // namespace ostrel
