#pragma once

namespace ostrel {

// Runs the application on a Mac until the user quits; returns the status of the process.
int runMacApplication(int& argc, char** argv);

}  // namespace ostrel
