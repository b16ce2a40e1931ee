#pragma once

#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

#include "platform/linux/process_table.h"
#include "platform/linux/temporary_folder.h"

namespace ostrel {

// Processes that exist in a folder like /proc only.
class FakeProcesses {
  public:
    struct Standing {
        int parent = 1;
        int session = 1;
        int terminal = 0;
    };

    [[nodiscard]] ProcessTable table() const { return ProcessTable(folder_.path()); }

    void add(int process, const Standing& standing) {
        write(process, "stat",
              std::to_string(process) + " (a) b) S " + std::to_string(standing.parent) + " 7 " +
                  std::to_string(standing.session) + ' ' + std::to_string(standing.terminal) +
                  " 0 0");
    }

    void write(int process, const std::string& file, std::string_view text) {
        const auto path = folder_.path() / std::to_string(process) / file;
        std::filesystem::create_directories(path.parent_path());
        std::ofstream(path) << text;
    }

    void setExecutable(int process, const std::string& path) {
        const auto folder = folder_.path() / std::to_string(process);
        std::filesystem::create_directories(folder);
        std::filesystem::create_symlink(path, folder / "exe");
    }

  private:
    TemporaryFolder folder_;
};

}  // namespace ostrel
