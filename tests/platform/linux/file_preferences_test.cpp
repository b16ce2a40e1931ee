#include "platform/linux/file_preferences.h"

#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mman.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <iterator>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include "platform/linux/temporary_folder.h"
#include "platform/virtual/virtual_run_loop.h"
#include "support/random_runs.h"

namespace ostrel {
namespace {

namespace fs = std::filesystem;
using Names = std::vector<std::string>;
using namespace std::chrono_literals;

constexpr const char* kSettings = "ostrel.settings.v1";
constexpr const char* kLog = "ostrel.breakLog.v1";

// A document of round `round` that shows any missing or foreign byte.
std::string document(int round) {
    const std::string number = std::to_string(round) + ";";
    std::string text;
    for (int i = 0; i < 200 + round % 7 * 3000; ++i) {
        text += number;
    }
    return text;
}

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
        store.write(kLog, "");
    }
    FilePreferences store(folder, loop);
    EXPECT_EQ(store.read(kSettings), bytes);
    EXPECT_EQ(store.read(kLog), "");
    EXPECT_EQ(files(), (Names{"ostrel.breakLog.v1.json", "ostrel.settings.v1.json"}));
    EXPECT_EQ(fs::status(folder).permissions(), fs::perms(0700));
    EXPECT_EQ(fs::status(folder / "ostrel.settings.v1.json").permissions(), fs::perms(0600));
    put("notes.txt", "x");
    put(".json", "x");
    store.remove(kSettings);
    EXPECT_EQ(store.read(kSettings), std::nullopt);
    EXPECT_EQ(store.keys(), Names{kLog});
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
    ASSERT_EQ(mkfifo((folder / "ostrel.breakLog.v1.json").c_str(), 0600), 0);
    FilePreferences store(folder, loop);
    for (const char* key : {kSettings, kLog}) {
        EXPECT_EQ(store.read(key), std::nullopt) << key;
        store.write(key, "new");
        EXPECT_EQ(store.read(key), "new") << key;
    }
    EXPECT_TRUE(fs::is_directory(folder / "ostrel.settings.v1.json.damaged" / "inside"));
    EXPECT_TRUE(fs::is_fifo(folder / "ostrel.breakLog.v1.json.damaged"));
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

struct RandomKillTest : ::testing::Test {
    TemporaryFolder folder;
    // The last round that is written whole, as the writer tells and its killer reads.
    volatile int* told = static_cast<int*>(
        mmap(nullptr, sizeof(int), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0));

    [[noreturn]] void writeForEver() const {
        VirtualRunLoop loop(wallTimeAt(0));
        FilePreferences store(folder.path(), loop);
        for (int round = *told + 1;; ++round) {
            store.write(kSettings, document(round));
            store.write(kLog, document(round));
            *told = round;
        }
    }
};

TEST_F(RandomKillTest, AProcessKilledAtAnyMomentLeavesWholeDocuments) {
    const int kills = randomRuns(300, 500);
    std::mt19937 random(20'260'309);
    std::uniform_int_distribution<int> microseconds(0, 8'000);
    for (int killed = 0; killed < kills && !HasFailure(); ++killed) {
        const int before = *told;
        const pid_t writer = fork();
        if (writer == 0) {
            writeForEver();
        }
        int status = 0;
        while (*told == before && waitpid(writer, nullptr, WNOHANG) == 0) {
        }
        std::this_thread::sleep_for(std::chrono::microseconds(microseconds(random)));
        kill(writer, SIGKILL);
        waitpid(writer, &status, 0);
        EXPECT_TRUE(WIFSIGNALED(status)) << "the writer ended by itself";

        VirtualRunLoop loop(wallTimeAt(0));
        const FilePreferences store(folder.path(), loop);
        for (const char* key : {kSettings, kLog}) {
            const std::string text = store.read(key).value_or("");
            const int found = std::atoi(text.c_str());
            EXPECT_EQ(text, document(found)) << "after kill " << killed;
            EXPECT_GE(found, *told) << "a written document is gone";
            EXPECT_LE(found, *told + 1);
        }
        EXPECT_EQ(std::distance(fs::directory_iterator(folder.path()), {}), 2) << "left-overs";
    }
}

// What a store on a failing disk does, whatever makes it fail; `full` breaks the disk for anything
// of more than a few bytes, `mend` repairs it.
void goesOnThroughAFailingDisk(const fs::path& folder, const std::function<void()>& full,
                               const std::function<void()>& mend) {
    VirtualRunLoop loop(wallTimeAt(0));
    FilePreferences store(folder, loop);
    std::vector<PersistenceError> told;
    const Subscription watch = store.persistenceWriteFailed.subscribe(
        [&](const PersistenceError& error) { told.push_back(error); });
    const auto onDisk = [&](const char* key) { return FilePreferences(folder, loop).read(key); };
    store.write(kSettings, "old");

    full();
    const std::string large(300'000, 'x');
    store.write(kSettings, large);
    store.write(kLog, large + "1");
    loop.runFor(2min);
    for (const auto& entry : fs::directory_iterator(folder)) {
        EXPECT_NE(entry.path().filename().native().front(), '.') << "a temporary file stays";
    }
    ASSERT_EQ(told.size(), 1U);
    EXPECT_EQ(told[0].kind, PersistenceError::Kind::writeFailed);
    EXPECT_EQ(told[0].key, kSettings);
    EXPECT_EQ(store.read(kSettings), large);
    EXPECT_EQ(onDisk(kSettings), "old");
    EXPECT_EQ(onDisk(kLog), std::nullopt);

    mend();
    loop.runFor(29s);
    EXPECT_EQ(onDisk(kSettings), "old") << "tried every half minute, not more often";
    loop.runFor(1s);
    EXPECT_EQ(onDisk(kSettings), large);
    EXPECT_EQ(onDisk(kLog), large + "1");

    full();
    store.write(kLog, large + "2");
    EXPECT_EQ(told.size(), 2U) << "a new series is told again";
    mend();
    store.write(kSettings, "small");
    EXPECT_EQ(onDisk(kLog), large + "2") << "tried again at the next write of another key";
}

// Runs `body` in a child process, where it may change what holds for a whole process. Its failed
// expectations fail this test too; a body that returns false could not be set up.
void inChild(const std::function<bool()>& body) {
    constexpr int kSkipped = 77;
    const pid_t child = fork();
    if (child == 0) {
        const bool ran = body();
        std::fflush(nullptr);
        _exit(::testing::Test::HasFailure() ? 1 : ran ? 0 : kSkipped);
    }
    int status = 0;
    EXPECT_EQ(waitpid(child, &status, 0), child);
    if (WIFEXITED(status) && WEXITSTATUS(status) == kSkipped) {
        GTEST_SKIP() << "this user may not mount anything";
    }
    EXPECT_EQ(status, 0) << "the child failed";
}

struct FailingDiskTest : ::testing::Test {
    TemporaryFolder folder;
    std::string path = folder.path();
};

TEST_F(FailingDiskTest, AFullDiskIsToldOnceAndTriedAgain) {
    inChild([&] {
        const int spaces = geteuid() == 0 ? CLONE_NEWNS : CLONE_NEWUSER | CLONE_NEWNS;
        if (unshare(spaces) != 0 ||
            mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
            mount("tmpfs", path.c_str(), "tmpfs", 0, "size=2m") != 0) {
            return false;
        }
        const auto fill = [&] {
            std::ofstream file(path + "/filler", std::ios::binary);
            while (file.write(std::string(4096, 'f').data(), 4096).flush()) {
            }
        };
        goesOnThroughAFailingDisk(path, fill, [&] { fs::remove(path + "/filler"); });
        return true;
    });
}

TEST_F(FailingDiskTest, AWriteCutOffAtAnyLengthIsToldOnceAndTriedAgain) {
    inChild([&] {
        signal(SIGXFSZ, SIG_IGN);
        const auto limitTo = [](rlim_t bytes) {
            const rlimit limit{bytes, RLIM_INFINITY};
            EXPECT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
        };
        goesOnThroughAFailingDisk(
            path, [&] { limitTo(100'000); }, [&] { limitTo(RLIM_INFINITY); });
        return true;
    });
}

}  // namespace
}  // namespace ostrel
