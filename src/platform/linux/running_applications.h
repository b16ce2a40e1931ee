#pragma once

#include <string>
#include <vector>

namespace ostrel {

// The identifiers of the applications that have a window on the screen, by the rule of
// applicationIdentifier(): each once, in alphabetical order, this program left out. Empty where
// nobody tells. Needs a QGuiApplication.
[[nodiscard]] std::vector<std::string> runningApplications();

}  // namespace ostrel
