#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ostrel {

// What the kernel tells about running processes (procfs). Everything is as of the moment of asking,
// and absent or empty for a process that is gone or that is not ours to look into.
class ProcessTable {
  public:
    using Process = std::int64_t;

    // Another folder than /proc is for trying things out.
    explicit ProcessTable(std::filesystem::path folder = "/proc") : folder_(std::move(folder)) {}

    // Its parent, that one's parent and so on, as far as they belong to what the user started: up
    // to the leader of the session, which itself counts unless it has a terminal. A shell is not
    // the player that was started in it.
    [[nodiscard]] std::vector<Process> ancestors(Process process) const;

    // The processes of a program, which is named by the path of its executable, by the name of
    // that, or by an application identifier that ends in that ("org.videolan.VLC").
    [[nodiscard]] std::vector<Process> running(std::string_view program) const;

    // The identifier of the sandboxed application that it runs in: Flatpak's, or the name of a
    // snap.
    [[nodiscard]] std::optional<std::string> sandboxedApplication(Process process) const;

    // The processes of a sandboxed application.
    [[nodiscard]] std::vector<Process> runningInSandbox(std::string_view application) const;

  private:
    [[nodiscard]] std::vector<Process> all() const;

    struct Status {
        Process parent = 0;
        Process session = 0;
        bool hasTerminal = false;
    };

    [[nodiscard]] std::optional<Status> status(Process process) const;
    [[nodiscard]] std::string read(Process process, const char* file) const;

    std::filesystem::path folder_;
};

}  // namespace ostrel
