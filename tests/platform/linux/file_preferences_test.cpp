#include "platform/linux/file_preferences.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QByteArray>
#include <algorithm>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "platform/linux/temporary_folder.h"
#include "platform/virtual/virtual_run_loop.h"

namespace ostrel {
namespace {

namespace fs = std::filesystem;
using Names = std::vector<std::string>;

constexpr const char* kSettings = "ostrel.settings.v1";
constexpr const char* kPool = "ostrel.penaltyPool.v1";

struct FilePreferencesTest : ::testing::Test {
    TemporaryFolder temporary;
    fs::path folder = temporary.path() / "config" / "ostrel";
    VirtualRunLoop loop{wallTimeAt(0)};

    void put(const std::string& name, const std::string& bytes) const {
        fs::create_directories(folder);
        std::ofstream(folder / name, std::ios::binary) << bytes;
    }
    std::string contentsOf(const std::string& name) const {
        std::ifstream file(folder / name, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    Names files() const {
        Names names;
        for (const auto& entry : fs::directory_iterator(folder)) {
            names.push_back(entry.path().filename());
        }
        std::sort(names.begin(), names.end());
        return names;
    }
};

TEST_F(FilePreferencesTest, EveryKeyIsAFileThatTheUserAloneCanRead) {
    const std::string bytes("{\"a\":\"\0\xff\"}\n", 11);
    {
        FilePreferences store(folder, loop);
        EXPECT_EQ(store.read(kSettings), std::nullopt);
        store.write(kSettings, "old and longer than what replaces it");
        store.write(kSettings, bytes);
        store.write(kPool, "");
    }
    FilePreferences store(folder, loop);
    EXPECT_EQ(store.read(kSettings), bytes);
    EXPECT_EQ(store.read(kPool), "");
    EXPECT_EQ(files(), (Names{"ostrel.penaltyPool.v1.json", "ostrel.settings.v1.json"}));
    struct stat status {};
    ASSERT_EQ(stat(folder.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0700U);
    ASSERT_EQ(stat((folder / "ostrel.settings.v1.json").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0600U);
    put("notes.txt", "x");
    put(".json", "x");
    store.remove(kSettings);
    EXPECT_EQ(store.read(kSettings), std::nullopt);
    EXPECT_EQ(store.keys(), Names{kPool});
}

TEST_F(FilePreferencesTest, EqualBytesAreNotWrittenAgain) {
    FilePreferences store(folder, loop);
    const auto inode = [this] {
        struct stat status {};
        EXPECT_EQ(stat((folder / "ostrel.settings.v1.json").c_str(), &status), 0);
        return status.st_ino;
    };
    store.write(kSettings, "{}");
    const auto first = inode();
    store.write(kSettings, "{}");
    EXPECT_EQ(inode(), first);
    store.write(kSettings, "{ }");
    EXPECT_NE(inode(), first);
}

TEST_F(FilePreferencesTest, SettingAsideNeverOverwritesWhatWasSetAsideBefore) {
    FilePreferences store(folder, loop);
    for (const char* bytes : {"one", "two", "three"}) {
        store.write(kSettings, bytes);
        store.setAside(kSettings);
        EXPECT_EQ(store.read(kSettings), std::nullopt);
    }
    EXPECT_EQ(files(),
              (Names{"ostrel.settings.v1.json.damaged", "ostrel.settings.v1.json.damaged-b",
                     "ostrel.settings.v1.json.damaged-c"}));
    EXPECT_EQ(contentsOf("ostrel.settings.v1.json.damaged"), "one");
    EXPECT_EQ(contentsOf("ostrel.settings.v1.json.damaged-c"), "three");
}

TEST_F(FilePreferencesTest, WhatCannotBeReadCountsAsAbsentAndIsSetAsideBeforeItIsReplaced) {
    fs::create_directories(folder / "ostrel.settings.v1.json" / "inside");
    ASSERT_EQ(mkfifo((folder / "ostrel.penaltyPool.v1.json").c_str(), 0600), 0);
    FilePreferences store(folder, loop);
    for (const char* key : {kSettings, kPool}) {
        EXPECT_EQ(store.read(key), std::nullopt) << key;
        store.write(key, "new");
        EXPECT_EQ(store.read(key), "new") << key;
    }
    EXPECT_TRUE(fs::is_directory(folder / "ostrel.settings.v1.json.damaged" / "inside"));
    EXPECT_TRUE(fs::is_fifo(folder / "ostrel.penaltyPool.v1.json.damaged"));
}

TEST_F(FilePreferencesTest, LeftOversOfDeadProcessesGoAndThoseOfLivingOnesStay) {
    const pid_t dead = fork();
    if (dead == 0) {
        _exit(0);
    }
    ASSERT_EQ(waitpid(dead, nullptr, 0), dead);
    const std::string prefix = ".ostrel-write-";
    put(prefix + std::to_string(dead) + "-abcdef", "half");
    put(prefix + std::to_string(getpid()) + "-abcdef", "half");
    const Names stay = {prefix + std::to_string(getppid()) + "-abcdef", prefix + "note",
                        "ostrel.settings.v1.json"};
    for (const std::string& name : stay) {
        put(name, "kept");
    }
    const FilePreferences store(folder, loop);
    EXPECT_EQ(files(), stay);
}

TEST_F(FilePreferencesTest, TheDefaultFolderFollowsTheEnvironment) {
    qputenv("HOME", "/home/somebody");
    for (const auto& [configured, expected] :
         {std::pair("/somewhere", "/somewhere/ostrel"),
          std::pair("", "/home/somebody/.config/ostrel"),
          std::pair("relative", "/home/somebody/.config/ostrel")}) {
        qputenv("XDG_CONFIG_HOME", configured);
        EXPECT_EQ(defaultPreferencesFolder(), expected);
    }
}

}  // namespace
}  // namespace ostrel
