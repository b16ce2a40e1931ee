#pragma once

#include <optional>
#include <string>

namespace ostrel {

// What people call the application of an identifier of applicationIdentifier(): as the table of
// call programs has it, else as its desktop file does in the language of a locale ("de_AT"). Absent
// where neither knows it.
[[nodiscard]] std::optional<std::string> applicationName(const std::string& identifier,
                                                         const std::string& locale);

}  // namespace ostrel
