#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace ostrel {

// The identifier that the settings' default list of call programs has for the program that calls
// itself `name` here, which is a window class, a desktop-file or an application identifier; letter
// case does not count. Absent for every other program.
//
// The window of a browser's web application ("crx_ID", "chrome-ID-Default") is that of
// "com.google.Chrome.app.ID", whichever browser of that family it is, unless it stands in the
// table.
[[nodiscard]] std::optional<std::string> callProgramIdentifier(std::string_view name);

// What people call the program of an identifier in that list, or of one that
// callProgramIdentifier() gives. Absent for every other.
[[nodiscard]] std::optional<std::string_view> callProgramName(std::string_view identifier);

// A name as the table has it, without blanks at its end: some programs have one there.
[[nodiscard]] std::string inSmallLetters(std::string_view name);

// Whether the name is that of a web application's window.
[[nodiscard]] bool isWebApplication(std::string_view name);

}  // namespace ostrel
