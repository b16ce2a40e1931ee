#include "platform/linux/application_identifier.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "core/settings/settings_defaults.h"
#include "platform/linux/call_programs.h"
#include "platform/linux/fake_processes.h"

namespace ostrel {
namespace {

using namespace std::string_literals;
using Names = X11Windows::Names;

constexpr int kPlain = 10;
constexpr int kFlatpak = 11;
constexpr int kSnap = 12;
constexpr int kOldSnap = 13;
constexpr int kChildOfSnap = 14;

TEST(ApplicationIdentifierTest, TheFirstNameThatIsKnownCountsAndASandboxByItsOwnAlone) {
    FakeProcesses fake;
    fake.write(kPlain, "cgroup", "0::/user.slice/session-2.scope\n");
    fake.write(kPlain, "environ", "HOME=/root\0NOT_SNAP_NAME=x\0"s);
    fake.write(kFlatpak, "root/.flatpak-info",
               "[Context]\nname=wrong\n[Application]\nruntime=r\nname=org.example.Player\n");
    fake.write(kSnap, "cgroup", "0::/user.slice/app.slice/snap.slack.slack-1a2b.scope\n");
    fake.setExecutable(kOldSnap, "/snap/spotify/12/bin/spotify");
    fake.write(kOldSnap, "environ", "SNAP_NAME=spotify\0HOME=/root\0"s);
    fake.setExecutable(kChildOfSnap, "/usr/bin/mpv");
    fake.write(kChildOfSnap, "environ", "HOME=/root\0SNAP_NAME=code\0"s);
    const std::string desktopFile = "/usr/share/applications/org.kde.app.desktop";
    const Names all{"org.gtk.App", desktopFile, "inst", "Class"};
    const Names kde{"", desktopFile, "inst", "Class"};
    const Names classOnly{"", "", "inst", "Class"};
    const Names web{"org.gtk.App", "", "crx_abcdefghijklmnopabcdefghijklmnop", "Google-chrome"};
    const struct {
        std::optional<int> process;
        Names names;
        const char* identifier = "";
    } cases[] = {
        {kFlatpak, all, "org.example.Player"},
        {kFlatpak, web, "com.google.Chrome.app.abcdefghijklmnopabcdefghijklmnop"},
        {kPlain, all, "org.gtk.App"},
        {std::nullopt, kde, "org.kde.app"},
        {kPlain, classOnly, "Class"},
        {kPlain, {"", "", "inst", ""}, "inst"},
        {99, classOnly, "Class"},  // it is gone
        {kSnap, classOnly, "com.tinyspeck.slackmacgap"},
        {kOldSnap, classOnly, "spotify"},
        {kChildOfSnap, classOnly, "Class"},
    };
    for (const auto& [process, names, identifier] : cases) {
        EXPECT_EQ(applicationIdentifier(fake.table(), process, names).value_or("none"), identifier)
            << process.value_or(0) << ' ' << names.gtkApplication;
    }
}

TEST(CallProgramsTest, TheProgramsOfTheDefaultListAreKnownByTheirNamesHere) {
    const std::pair<const char*, const char*> cases[] = {
        {"us.zoom.Zoom", "us.zoom.xos"},
        {"crx_cifhbcnohmdccbgoicgdjpfamggdegmo", "com.microsoft.teams2"},
        {"Slack", "com.tinyspeck.slackmacgap"},
        {"msedge-_kjbdgfilnfhdoflbpgamdcdgpehopbep-Profile_1",
         "com.google.Chrome.app.kjbdgfilnfhdoflbpgamdcdgpehopbep"},
    };
    const auto defaults = PresenceDefaults::deferAppBundleIDs();
    for (const auto& [name, identifier] : cases) {
        EXPECT_EQ(callProgramIdentifier(name), identifier) << name;
        EXPECT_NE(std::ranges::find(defaults, identifier), defaults.end()) << identifier;
    }
    for (const char* other : {"", "zoomer", "Google-chrome", "crx_abc"}) {
        EXPECT_EQ(callProgramIdentifier(other), std::nullopt) << other;
    }
}

using Processes = std::vector<ProcessTable::Process>;

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
    fake.setExecutable(12, "/opt/other/chromium");
    fake.setExecutable(13, "/usr/bin/python3.11");
    fake.write(13, "comm", "a-name-that-is-\n");
    fake.setExecutable(14, "/usr/bin/vlc");
    fake.write(15, "comm", "\n");
    const ProcessTable table = fake.table();
    EXPECT_EQ(table.running("/opt/other/chromium"), Processes{12});
    EXPECT_EQ(table.running("Chromium").size(), 2U);
    EXPECT_EQ(table.running("a-name-that-is-cut"), Processes{13});
    EXPECT_EQ(table.running("org.videolan.VLC"), Processes{14});
    for (const char* name : {"firefox", "", "org."}) {
        EXPECT_EQ(table.running(name), Processes{}) << name;
    }
}

}  // namespace
}  // namespace ostrel
