#include "platform/linux/file_preferences.h"

#include <QByteArray>
#include <QDir>
#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <system_error>
#include <utility>

#include "base/fatal.h"
#include "platform/api/aside_names.h"
#include "platform/linux/durable_files.h"

namespace ostrel {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kExtension = ".json";

std::string systemText(int error) {
    return std::generic_category().message(error);
}

PersistenceError writeError(std::string_view key, int error) {
    return {PersistenceError::Kind::writeFailed, std::string(key), systemText(error)};
}

}  // namespace

FilePreferences::FilePreferences(fs::path folder, RunLoop& runLoop, Access access)
    : folder_(std::move(folder)), runLoop_(runLoop), access_(access) {
    if (access_ == Access::readOnly) {
        return;
    }
    // A failure shows again with the first write, which tells of it.
    static_cast<void>(makeFolder(folder_));
    removeLeftOvers(folder_);
}

FilePreferences::~FilePreferences() = default;

fs::path FilePreferences::fileOf(std::string_view key) const {
    if (key.empty() || key.find('/') != std::string_view::npos) {
        fatal("a preferences key that cannot name a file");
    }
    return folder_ / (std::string(key) + std::string(kExtension));
}

std::optional<std::string> FilePreferences::read(std::string_view key) const {
    const fs::path file = fileOf(key);
    if (const auto waiting = pending_.find(key); waiting != pending_.end()) {
        return waiting->second;
    }
    if (toSetAside_.contains(key)) {
        return std::nullopt;
    }
    FileContents contents = readFile(file);
    return contents.error == 0 ? std::optional(std::move(contents.bytes)) : std::nullopt;
}

void FilePreferences::write(std::string_view key, std::string_view bytes) {
    change(key, bytes);
}

void FilePreferences::remove(std::string_view key) {
    change(key, std::nullopt);
}

void FilePreferences::change(std::string_view key, std::optional<std::string_view> bytes) {
    if (access_ == Access::readOnly) {
        return;
    }
    const int error = bytes ? store(key, *bytes) : erase(key);
    if (const auto waiting = pending_.find(key); waiting != pending_.end()) {
        pending_.erase(waiting);
    }
    std::optional<PersistenceError> failure = retry();
    if (error != 0) {
        pending_.emplace(key, bytes);
        failure = writeError(key, error);
    }
    settle(failure);
}

std::vector<std::string> FilePreferences::keys() const {
    std::set<std::string> keys;
    std::error_code ignored;
    for (fs::directory_iterator entry(folder_, ignored), end; entry != end;
         entry.increment(ignored)) {
        std::string name = entry->path().filename();
        std::error_code unknown;
        if (name.ends_with(kExtension) && name.size() > kExtension.size() &&
            entry->is_regular_file(unknown)) {
            name.resize(name.size() - kExtension.size());
            keys.insert(std::move(name));
        }
    }
    for (const std::string& gone : toSetAside_) {
        keys.erase(gone);
    }
    for (const auto& [key, bytes] : pending_) {
        if (bytes) {
            keys.insert(key);
        } else {
            keys.erase(key);
        }
    }
    return {keys.begin(), keys.end()};
}

void FilePreferences::setAside(std::string_view key) {
    if (access_ == Access::readOnly) {
        return;
    }
    if (const auto waiting = pending_.find(key); waiting != pending_.end()) {
        pending_.erase(waiting);
    }
    if (moveAside(key) != 0) {
        toSetAside_.emplace(key);
    }
    settle(std::nullopt);
}

int FilePreferences::moveAside(std::string_view key) {
    const fs::path file = fileOf(key);
    int error = EEXIST;
    for (int count = 0; error == EEXIST && count < kMostSetAside; ++count) {
        fs::path aside = file;
        aside += asideSuffix(count);
        error = renameFile(file, aside);
        if (error == 0) {
            std::fprintf(stderr, "ostrel: %s could not be used and was set aside as %s\n",
                         file.c_str(), aside.filename().c_str());
        }
    }
    if (error == 0 || error == ENOENT || error == ENOTDIR) {
        if (const auto owed = toSetAside_.find(key); owed != toSetAside_.end()) {
            toSetAside_.erase(owed);
        }
        return 0;
    }
    return error;
}

int FilePreferences::store(std::string_view key, std::string_view bytes) {
    const fs::path file = fileOf(key);
    const FileContents stored = readFile(file);
    const bool isAbsent = stored.error == ENOENT || stored.error == ENOTDIR;
    const bool mustGo = toSetAside_.contains(key) || (stored.error != 0 && !isAbsent);
    if (!mustGo && stored.error == 0 && stored.bytes == bytes) {
        return 0;
    }
    if (const int error = mustGo ? moveAside(key) : makeFolder(folder_); error != 0) {
        return error;
    }
    return replaceFile(file, bytes);
}

int FilePreferences::erase(std::string_view key) {
    const fs::path file = fileOf(key);
    return toSetAside_.contains(key) ? moveAside(key) : removeFile(file);
}

// Tries what waits in memory; the first that fails again.
std::optional<PersistenceError> FilePreferences::retry() {
    std::optional<PersistenceError> failure;
    for (auto waiting = pending_.begin(); waiting != pending_.end();) {
        const auto& [key, bytes] = *waiting;
        const int error = bytes ? store(key, *bytes) : erase(key);
        if (error != 0 && !failure) {
            failure = writeError(key, error);
        }
        waiting = error == 0 ? pending_.erase(waiting) : std::next(waiting);
    }
    return failure;
}

void FilePreferences::settle(const std::optional<PersistenceError>& failure) {
    if (pending_.empty()) {
        retryTimer_ = Timer();
    } else if (!retryTimer_) {
        retryTimer_ = runLoop_.repeat(kRetryPeriod, kRetryPeriod, [this] { settle(retry()); });
    }
    if (!failure && pending_.empty()) {
        failureTold_ = false;
    } else if (failure && !std::exchange(failureTold_, true)) {
        persistenceWriteFailed.send(*failure);
    }
}

fs::path defaultPreferencesFolder() {
    const QByteArray configured = qgetenv("XDG_CONFIG_HOME");
    if (configured.startsWith('/')) {
        return fs::path(configured.toStdString()) / "ostrel";
    }
    return fs::path(QDir::homePath().toStdString()) / ".config" / "ostrel";
}

}  // namespace ostrel
