#pragma once

#include <string>

namespace ostrel {

struct ControlReport;
struct ControlStatus;

// What the command line tells of the status and the report, in the current language.
namespace StatusText {

// A few lines.
[[nodiscard]] std::string lines(const ControlStatus& status);
// The most telling one of them, without an end of line.
[[nodiscard]] std::string line(const ControlStatus& status);
// For a status bar: a countdown as the status item shows it, or a word.
[[nodiscard]] std::string compact(const ControlStatus& status);

[[nodiscard]] std::string lines(const ControlReport& report);

}  // namespace StatusText
}  // namespace ostrel
