#include "platform/linux/durable_files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <charconv>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <system_error>

#include "platform/linux/file_descriptor.h"

namespace ostrel {
namespace {

namespace fs = std::filesystem;

constexpr off_t kMaxBytes = off_t{64} << 20U;
constexpr std::string_view kTemporaryPrefix = ".ostrel-write-";

// Opens a regular file and tells its size; a pipe or a device must not block or answer.
FileDescriptor openToRead(const fs::path& file, off_t& size, int& error) {
    FileDescriptor descriptor(open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat status {};
    if (!descriptor || fstat(descriptor.get(), &status) != 0) {
        error = errno;
    } else if (!S_ISREG(status.st_mode)) {
        error = S_ISDIR(status.st_mode) ? EISDIR : EINVAL;
    } else if (status.st_size > kMaxBytes) {
        error = EFBIG;
    } else {
        size = status.st_size;
        error = 0;
    }
    return descriptor;
}

int readAll(int descriptor, std::string& bytes, off_t expected) {
    bytes.resize(static_cast<std::size_t>(expected) + 1);
    std::size_t length = 0;
    while (true) {
        const ssize_t count = read(descriptor, bytes.data() + length, bytes.size() - length);
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count < 0) {
            return errno;
        }
        if (count == 0) {
            bytes.resize(length);
            return 0;
        }
        length += static_cast<std::size_t>(count);
        if (length > static_cast<std::size_t>(kMaxBytes)) {
            return EFBIG;
        }
        if (length == bytes.size()) {
            bytes.resize(length * 2);
        }
    }
}

int writeAll(int descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = write(descriptor, bytes.data(), bytes.size());
        if (count < 0 && errno != EINTR) {
            return errno;
        }
        if (count > 0) {
            bytes.remove_prefix(static_cast<std::size_t>(count));
        }
    }
    return 0;
}

int syncFolder(const fs::path& folder) {
    const FileDescriptor descriptor(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!descriptor) {
        // A folder that may be written but not listed cannot be asked to.
        return errno == EACCES ? 0 : errno;
    }
    // Some file systems have nothing to do for a folder and say so.
    return fsync(descriptor.get()) == 0 || errno == EINVAL ? 0 : errno;
}

int fillTemporary(FileDescriptor temporary, std::string_view bytes) {
    if (const int error = writeAll(temporary.get(), bytes); error != 0) {
        return error;
    }
    if (fsync(temporary.get()) != 0) {
        return errno;
    }
    return temporary.close();
}

bool isLeftOver(std::string_view name) {
    if (!name.starts_with(kTemporaryPrefix)) {
        return false;
    }
    name.remove_prefix(kTemporaryPrefix.size());
    pid_t owner = 0;
    const auto [end, error] = std::from_chars(name.data(), name.data() + name.size(), owner);
    if (error != std::errc() || owner <= 0) {
        return false;
    }
    // This process has written nothing yet: under its number it was another one.
    return owner == getpid() || (kill(owner, 0) != 0 && errno == ESRCH);
}

}  // namespace

FileContents readFile(const fs::path& file) {
    FileContents contents;
    off_t size = 0;
    const FileDescriptor descriptor = openToRead(file, size, contents.error);
    if (contents.error == 0) {
        contents.error = readAll(descriptor.get(), contents.bytes, size);
    }
    return contents;
}

int replaceFile(const fs::path& file, std::string_view bytes) {
    const fs::path folder = file.parent_path();
    std::string temporary =
        folder / (std::string(kTemporaryPrefix) + std::to_string(getpid()) + "-XXXXXX");
    // mkostemp() makes it readable by the user alone.
    FileDescriptor descriptor(mkostemp(temporary.data(), O_CLOEXEC));
    if (!descriptor) {
        return errno;
    }
    int error = fillTemporary(std::move(descriptor), bytes);
    if (error == 0 && rename(temporary.c_str(), file.c_str()) != 0) {
        error = errno;
    }
    if (error != 0) {
        unlink(temporary.c_str());
        return error;
    }
    return syncFolder(folder);
}

int removeFile(const fs::path& file) {
    if (unlink(file.c_str()) != 0) {
        return errno == ENOENT || errno == ENOTDIR ? 0 : errno;
    }
    return syncFolder(file.parent_path());
}

int renameFile(const fs::path& from, const fs::path& to) {
    if (renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) {
        return syncFolder(to.parent_path());
    }
    if (errno != EINVAL && errno != ENOSYS) {
        return errno;
    }
    // A file system that cannot do both at once; nobody else writes in this folder.
    struct stat status {};
    if (lstat(to.c_str(), &status) == 0) {
        return EEXIST;
    }
    return rename(from.c_str(), to.c_str()) != 0 ? errno : syncFolder(to.parent_path());
}

int makeFolder(const fs::path& folder) {
    struct stat status {};
    if (folder.empty() || stat(folder.c_str(), &status) == 0) {
        return 0;
    }
    if (folder.has_parent_path() && folder.parent_path() != folder) {
        if (const int error = makeFolder(folder.parent_path()); error != 0) {
            return error;
        }
    }
    return mkdir(folder.c_str(), S_IRWXU) != 0 && errno != EEXIST ? errno : 0;
}

void removeLeftOvers(const fs::path& folder) {
    std::error_code ignored;
    for (fs::directory_iterator entry(folder, ignored), end; entry != end;
         entry.increment(ignored)) {
        if (isLeftOver(entry->path().filename().native())) {
            unlink(entry->path().c_str());
        }
    }
}

}  // namespace ostrel
