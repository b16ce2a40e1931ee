#include "platform/linux/process_table.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <vector>

#include "platform/linux/fake_processes.h"

namespace ostrel {
namespace {

using Processes = std::vector<ProcessTable::Process>;

Processes sorted(Processes processes) {
    std::ranges::sort(processes);
    return processes;
}

TEST(ProcessTableTest, AncestorsReachUpToTheLeaderOfTheSession) {
    constexpr int kTerminal = 34816;
    FakeProcesses fake;
    fake.add(1, {0, 1, 0});
    fake.add(10, {1, 10, 0});  // a desktop
    fake.add(20, {10, 10, 0});
    fake.add(21, {20, 10, 0});
    fake.add(30, {10, 30, 0});  // a browser in a session of its own
    fake.add(31, {30, 30, 0});
    fake.add(40, {20, 40, kTerminal});  // a shell
    fake.add(41, {40, 40, kTerminal});
    fake.add(42, {41, 40, kTerminal});
    fake.add(50, {1, 9, 0});   // its session's leader is gone
    fake.add(70, {71, 9, 0});  // two that claim each other
    fake.add(71, {70, 9, 0});
    fake.write(80, "stat", "80 (cut");
    const ProcessTable table = fake.table();
    EXPECT_EQ(table.ancestors(21), (Processes{20, 10}));
    EXPECT_EQ(table.ancestors(31), Processes{30});
    EXPECT_EQ(table.ancestors(42), Processes{41}) << "the shell does not count";
    EXPECT_EQ(table.ancestors(50), Processes{}) << "nor does the first process";
    EXPECT_FALSE(table.ancestors(70).empty());
    EXPECT_EQ(table.ancestors(80), Processes{});
}

TEST(ProcessTableTest, AProgramIsFoundByItsPathItsNameAndItsIdentifier) {
    FakeProcesses fake;
    fake.setExecutable(10, "/usr/lib/chromium/chromium");
    fake.setExecutable(11, "/usr/lib/chromium/chromium");
    fake.setExecutable(12, "/opt/other/chromium");
    fake.setExecutable(13, "/usr/bin/python3.11");
    fake.write(13, "comm", "a-name-that-is-\n");
    fake.setExecutable(14, "/usr/bin/vlc");
    fake.write(15, "comm", "\n");
    const ProcessTable table = fake.table();
    EXPECT_EQ(sorted(table.running("/usr/lib/chromium/chromium")), (Processes{10, 11}));
    EXPECT_EQ(sorted(table.running("Chromium")), (Processes{10, 11, 12}));
    EXPECT_EQ(table.running("a-name-that-is-cut"), Processes{13});
    EXPECT_EQ(table.running("org.videolan.VLC"), Processes{14});
    for (const char* name : {"firefox", "", "org."}) {
        EXPECT_EQ(table.running(name), Processes{}) << name;
    }
}

TEST(ProcessTableTest, TheRealOneKnowsThisProcess) {
    const ProcessTable table;
    const auto self = std::filesystem::read_symlink("/proc/self/exe").string();
    const Processes found = table.running(self);
    EXPECT_NE(std::ranges::find(found, getpid()), found.end());
    const Processes ancestors = table.ancestors(getpid());
    EXPECT_TRUE(ancestors.empty() || ancestors.front() == getppid());
}

}  // namespace
}  // namespace ostrel
