#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace ostrel {

// A program as the workspace tells of it.
struct RunningProgram {
    std::optional<std::string> identifier;
    bool isInDock = false;
    std::int64_t process = 0;
};

// Whether it is one to choose from a list: people know it, it can be found again, and it is not us.
[[nodiscard]] inline bool isToChoose(const RunningProgram& program, std::int64_t own) {
    return program.identifier && program.isInDock && program.process != own;
}

}  // namespace ostrel
