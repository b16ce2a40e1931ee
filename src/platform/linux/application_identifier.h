#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/linux/process_table.h"
#include "platform/linux/x11_windows.h"

namespace ostrel {

// What stands for a bundle identifier where applications have none: the first of these that is
// known, as callProgramIdentifier() has it and else as it is.
//
// - a browser's web application, which is one of its own
// - the sandboxed application that the process runs in
// - what the window names: the application, the desktop file without its folder and suffix
// - the window class
[[nodiscard]] std::optional<std::string> applicationIdentifier(const ProcessTable& processes,
                                                               std::optional<std::int64_t> process,
                                                               const X11Windows::Names& names);

}  // namespace ostrel
