#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace ostrel {

// The reports that earlier runs left behind when they ended by a fault of their own: text files in
// a folder, "crash-20261121T203800Z.txt".
class CrashReports {
  public:
    static constexpr std::size_t kMostKept = 5;

    explicit CrashReports(std::filesystem::path folder);

    // Removes all but the newest kMostKept.
    void prune() const;

    [[nodiscard]] std::optional<std::filesystem::path> newest() const;

    // The newest report, unless it was there when this was asked before, in this run or another.
    [[nodiscard]] std::optional<std::filesystem::path> takeUnseen() const;

  private:
    [[nodiscard]] std::vector<std::string> names() const;

    std::filesystem::path folder_;
};

// Where the reports of this user lie: "ostrel" in $XDG_STATE_HOME, or in ~/.local/state where that
// is not set to an absolute path.
[[nodiscard]] std::filesystem::path defaultStateFolder();

}  // namespace ostrel
