#include "platform/linux/process_table.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <charconv>
#include <fstream>
#include <sstream>
#include <system_error>

namespace ostrel {
namespace {

constexpr ProcessTable::Process kFirstProcess = 1;
// More than any tree of processes is deep; ends a walk through one that changes meanwhile.
constexpr std::size_t kDeepest = 64;
// The kernel cuts the names of processes.
constexpr std::size_t kLongestName = 15;
// What a process may make of its own files is anybody's guess.
constexpr std::size_t kMostBytes = 1 << 18;

std::string lower(std::string_view text) {
    std::string result(text);
    std::ranges::transform(result, result.begin(), [](unsigned char character) {
        return static_cast<char>(std::tolower(character));
    });
    return result;
}

// What follows `start` up to one of `ends`.
std::optional<std::string> between(std::string_view text, std::string_view start,
                                   std::string_view ends) {
    const auto found = text.find(start);
    if (found == std::string_view::npos) {
        return std::nullopt;
    }
    const std::string_view rest = text.substr(found + start.size());
    const std::string_view value = rest.substr(0, rest.find_first_of(ends));
    return value.empty() ? std::nullopt : std::optional<std::string>(value);
}

// The value of `name=` in the group [Application] of Flatpak's description of an instance.
std::optional<std::string> flatpakName(std::string_view text) {
    const auto group = text.find("[Application]");
    if (group == std::string_view::npos) {
        return std::nullopt;
    }
    const std::string_view rest = text.substr(group + 1);
    return between(rest.substr(0, rest.find("\n[")), "\nname=", "\r\n");
}

}  // namespace

std::string ProcessTable::read(Process process, const char* file) const {
    std::ifstream stream(folder_ / std::to_string(process) / file, std::ios::binary);
    std::string text;
    std::array<char, 4096> part{};
    while (stream && text.size() < kMostBytes) {
        stream.read(part.data(), part.size());
        text.append(part.data(), static_cast<std::size_t>(stream.gcount()));
    }
    return text;
}

std::optional<ProcessTable::Status> ProcessTable::status(Process process) const {
    const std::string text = read(process, "stat");
    // The name before it may hold anything, blanks and parentheses too.
    const auto nameEnd = text.rfind(')');
    if (nameEnd == std::string::npos) {
        return std::nullopt;
    }
    std::istringstream fields(text.substr(nameEnd + 1));
    char state = 0;
    std::int64_t group = 0;
    std::int64_t terminal = 0;
    Status status;
    fields >> state >> status.parent >> group >> status.session >> terminal;
    status.hasTerminal = terminal != 0;
    return fields ? std::optional(status) : std::nullopt;
}

std::vector<ProcessTable::Process> ProcessTable::ancestors(Process process) const {
    std::vector<Process> found;
    auto current = status(process);
    while (current && process != current->session && found.size() < kDeepest) {
        process = current->parent;
        current = process > kFirstProcess ? status(process) : std::nullopt;
        const bool isShell = current && process == current->session && current->hasTerminal;
        if (current && !isShell) {
            found.push_back(process);
        }
    }
    return found;
}

std::vector<ProcessTable::Process> ProcessTable::all() const {
    std::vector<Process> found;
    std::error_code error;
    for (std::filesystem::directory_iterator entry(folder_, error), end; !error && entry != end;
         entry.increment(error)) {
        const std::string name = entry->path().filename().string();
        Process process = 0;
        const auto [rest, fault] = std::from_chars(name.data(), name.data() + name.size(), process);
        if (fault != std::errc() || rest != name.data() + name.size()) {
            continue;
        }
        found.push_back(process);
    }
    return found;
}

std::vector<ProcessTable::Process> ProcessTable::runningInSandbox(
    std::string_view application) const {
    std::vector<Process> found = all();
    std::erase_if(found,
                  [&](Process process) { return sandboxedApplication(process) != application; });
    return found;
}

std::vector<ProcessTable::Process> ProcessTable::running(std::string_view program) const {
    const bool isPath = program.starts_with('/');
    const std::string wanted =
        lower(isPath ? program : program.substr(program.find_last_of('.') + 1));
    std::vector<Process> found;
    if (wanted.empty()) {
        return found;
    }
    for (const Process process : all()) {
        std::error_code unreadable;
        const auto executable =
            std::filesystem::read_symlink(folder_ / std::to_string(process) / "exe", unreadable)
                .string();
        bool matches = lower(executable) == wanted;
        if (!isPath && !matches) {
            std::string command = lower(read(process, "comm"));
            command.resize(std::min(command.find('\n'), command.size()));
            matches = command == wanted.substr(0, kLongestName) ||
                      lower(std::filesystem::path(executable).filename().string()) == wanted;
        }
        if (matches) {
            found.push_back(process);
        }
    }
    return found;
}

std::optional<std::string> ProcessTable::sandboxedApplication(Process process) const {
    if (auto flatpak = flatpakName(read(process, "root/.flatpak-info"))) {
        return flatpak;
    }
    const std::string groups = read(process, "cgroup");
    // As systemd units: "snap.NAME.COMMAND.service", or "snap.NAME.COMMAND-UUID.scope".
    if (groups.find("/snap.") != std::string::npos) {
        return between(groups, "/snap.", ".\n/");
    }
    // A program that a snap starts has the variable too, but lies elsewhere.
    std::error_code unreadable;
    const auto executable =
        std::filesystem::read_symlink(folder_ / std::to_string(process) / "exe", unreadable);
    if (!executable.string().starts_with("/snap/")) {
        return std::nullopt;
    }
    // Preceded by a null, as are all variables but the first.
    return between('\0' + read(process, "environ"), std::string_view("\0SNAP_NAME=", 11),
                   std::string_view("\0", 1));
}

}  // namespace ostrel
