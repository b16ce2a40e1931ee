#pragma once

#include <chrono>
#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>

#include "platform/api/preferences_store.h"
#include "platform/api/run_loop.h"

namespace ostrel {

// The user's preferences as one file per key in a folder: "ostrel.settings.v1" is
// "ostrel.settings.v1.json". The folder and the files are readable by the user alone.
//
// What cannot be written is kept in memory and tried again with the next write of any key and every
// half minute. The first failure is told; the next one only after everything has been written.
class FilePreferences : public PreferencesStore {
  public:
    static constexpr std::chrono::seconds kRetryPeriod{30};

    // With readOnly nothing is ever written, made or removed: a look at another process's files.
    enum class Access { full, readOnly };

    // Makes the folder if need be; its files must belong to this process alone. `runLoop` must
    // outlive the store.
    FilePreferences(std::filesystem::path folder, RunLoop& runLoop, Access access = Access::full);
    FilePreferences(const FilePreferences&) = delete;
    FilePreferences& operator=(const FilePreferences&) = delete;
    ~FilePreferences() override;

    // A key with a '/' in it is fatal, here and below.
    [[nodiscard]] std::optional<std::string> read(std::string_view key) const override;

    // Writes nothing when the bytes are there already. A file that cannot be read is set aside
    // before it is replaced.
    void write(std::string_view key, std::string_view bytes) override;
    void remove(std::string_view key) override;
    [[nodiscard]] std::vector<std::string> keys() const override;

    // Renames the file to "KEY.json.damaged", "KEY.json.damaged-b" and so on.
    void setAside(std::string_view key) override;

  private:
    using Bytes = std::optional<std::string>;  // absent: to be removed

    [[nodiscard]] std::filesystem::path fileOf(std::string_view key) const;
    [[nodiscard]] int store(std::string_view key, std::string_view bytes);
    [[nodiscard]] int erase(std::string_view key);
    [[nodiscard]] int moveAside(std::string_view key);
    void change(std::string_view key, std::optional<std::string_view> bytes);
    [[nodiscard]] std::optional<PersistenceError> retry();
    void settle(const std::optional<PersistenceError>& failure);

    std::filesystem::path folder_;
    RunLoop& runLoop_;
    const Access access_;
    std::map<std::string, Bytes, std::less<>> pending_;
    std::set<std::string, std::less<>> toSetAside_;  // could not be renamed yet; they count as gone
    bool failureTold_ = false;
    Timer retryTimer_;
};

// Where the preferences of this user live: "ostrel" in $XDG_CONFIG_HOME, or in ~/.config where that
// is not set to an absolute path.
[[nodiscard]] std::filesystem::path defaultPreferencesFolder();

}  // namespace ostrel
