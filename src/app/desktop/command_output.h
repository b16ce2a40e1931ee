#pragma once

#include <string>

#include "base/localized_text.h"

namespace ostrel {

// How a command ends. Of those that ask the running program; the others know done, failed and
// usage.
struct ExitStatus {
    static constexpr int kDone = 0;
    static constexpr int kFailed = 1;  // refused by the program, or it could not be done
    static constexpr int kUsage = 2;
    static constexpr int kNotRunning = 3;   // as the Linux Standard Base has it for services
    static constexpr int kUnreachable = 4;  // likewise: it cannot be told whether it runs
};

// Where somebody reads along and goes, as in a pipe into head, that is the end and no signal.
void surviveClosedPipes();

// Writes it to standard output at once. Returns the exit status: a reader that is gone is no
// failure, a full disk is told of.
[[nodiscard]] int print(const std::string& text);

// Whether whoever reads standard output is still there, as far as print() has seen.
[[nodiscard]] bool isOutputOpen();

// One line on standard error, after the program's name. Returns `status`. A word of the user's that
// would break the line, or that nobody would see, stands in quotes.
[[nodiscard]] int complain(const LocalizedText& text, int status);
// The same with words that the running program has chosen.
[[nodiscard]] int passOn(const std::string& words, int status);
// One line on standard error after the name of the file that is at fault, as compilers have it.
[[nodiscard]] int complainOf(const std::string& file, const std::string& problem, int status);

}  // namespace ostrel
