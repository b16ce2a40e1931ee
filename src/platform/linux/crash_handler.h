#pragma once

#include <filesystem>
#include <string_view>

namespace ostrel {

// Whether a sanitizer is built in, which tells of a fault more than a report could.
[[nodiscard]] bool areFaultsSeenBySanitizer();

// From now on a fault of the program's own (SIGSEGV, SIGABRT, SIGBUS, SIGFPE, SIGILL, an exception
// that nobody catches, fatal()) leaves a report in the folder: version, time, signal and the
// places in the program, by the names of its files alone, and nothing of the user's. The process
// then ends as it would have without.
//
// Once in a process. The folder is made, for the user alone; the error number of the system where
// that fails, and nothing is installed.
[[nodiscard]] int installCrashHandler(const std::filesystem::path& folder,
                                      std::string_view version);

}  // namespace ostrel
