#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace ostrel {

// Files that survive a crash at any moment. Errors are the system's numbers (errno), 0 is success.

struct FileContents {
    int error = 0;  // ENOENT: there is none; any other: there is one that cannot be read
    std::string bytes;
};

// Anything but a regular file of up to 64 MiB cannot be read.
[[nodiscard]] FileContents readFile(const std::filesystem::path& file);

// Gives the file new contents, readable by the user alone. On the disk there are the old bytes or
// the new ones at any time; after a failure the old ones and nothing else.
[[nodiscard]] int replaceFile(const std::filesystem::path& file, std::string_view bytes);

// Removes the file. One that is not there is success.
[[nodiscard]] int removeFile(const std::filesystem::path& file);

// Renames the file without overwriting another: EEXIST.
[[nodiscard]] int renameFile(const std::filesystem::path& from, const std::filesystem::path& to);

// Makes the folder, for the user alone, and those above it.
[[nodiscard]] int makeFolder(const std::filesystem::path& folder);

// Removes what replaceFile() left behind in the folder when its process was killed; files of living
// processes stay.
void removeLeftOvers(const std::filesystem::path& folder);

}  // namespace ostrel
