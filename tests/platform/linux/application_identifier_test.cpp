#include "platform/linux/application_identifier.h"

#include <gtest/gtest.h>

#include <string>

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
constexpr int kOddFlatpak = 15;

struct ApplicationIdentifierTest : ::testing::Test {
    FakeProcesses fake;

    ApplicationIdentifierTest() {
        fake.write(kPlain, "cgroup", "0::/user.slice/session-2.scope\n");
        fake.write(kPlain, "environ", "HOME=/root\0NOT_SNAP_NAME=x\0"s);
        fake.write(kFlatpak, "root/.flatpak-info",
                   "[Context]\nname=wrong\n[Application]\nruntime=r\nname=org.example.Player\n");
        fake.write(kSnap, "cgroup", "0::/user.slice/app.slice/snap.slack.slack-1a2b.scope\n");
        fake.setExecutable(kOldSnap, "/snap/spotify/12/bin/spotify");
        fake.write(kOldSnap, "environ", "SNAP_NAME=spotify\0HOME=/root\0"s);
        fake.setExecutable(kChildOfSnap, "/usr/bin/mpv");
        fake.write(kChildOfSnap, "environ", "HOME=/root\0SNAP_NAME=code\0"s);
        fake.write(kOddFlatpak, "root/.flatpak-info", "[Application]\n[Instance]\nname=wrong\n");
    }
};

TEST_F(ApplicationIdentifierTest, TheFirstNameThatIsKnownCountsAndASandboxByItsOwnAlone) {
    const std::string desktopFile = "/usr/share/applications/org.kde.app.desktop";
    const Names all{"org.gtk.App", desktopFile, "inst", "Class"};
    const Names kde{"", desktopFile, "inst", "Class"};
    const Names classOnly{"", "", "inst", "Class"};
    const Names web{"org.gtk.App", "", "crx_abcdefghijklmnopabcdefghijklmnop", "Google-chrome"};
    const struct {
        std::optional<int> process;
        Names names;
        const char* identifier;
    } cases[] = {
        {kFlatpak, all, "org.example.Player"},
        {kFlatpak, web, "com.google.Chrome.app.abcdefghijklmnopabcdefghijklmnop"},
        {kPlain, all, "org.gtk.App"},
        {std::nullopt, kde, "org.kde.app"},
        {kPlain, classOnly, "Class"},
        {kPlain, {"", "", "inst", ""}, "inst"},
        {kPlain, {}, "none"},
        {99, classOnly, "Class"},  // it is gone
        {kSnap, classOnly, "com.tinyspeck.slackmacgap"},
        {kOldSnap, classOnly, "spotify"},
        {kChildOfSnap, classOnly, "Class"},
        {kOddFlatpak, classOnly, "Class"},
    };
    for (const auto& [process, names, identifier] : cases) {
        EXPECT_EQ(applicationIdentifier(fake.table(), process, names).value_or("none"), identifier)
            << process.value_or(0) << ' ' << names.gtkApplication;
    }
}

TEST(CallProgramsTest, TheProgramsOfTheDefaultListAreKnownByTheirNamesHere) {
    const std::pair<const char*, const char*> cases[] = {
        {"zoom", "us.zoom.xos"},
        {"zoom ", "us.zoom.xos"},
        {"us.zoom.Zoom", "us.zoom.xos"},
        {"teams-for-linux", "com.microsoft.teams2"},
        {"crx_cifhbcnohmdccbgoicgdjpfamggdegmo", "com.microsoft.teams2"},
        {"CiscoCollabHost", "com.cisco.webexmeetingsapp"},
        {"Slack", "com.tinyspeck.slackmacgap"},
        {"discord", "com.hnc.Discord"},
        {"crx_kjbdgfilnfhdoflbpgamdcdgpehopbep",
         "com.google.Chrome.app.kjbdgfilnfhdoflbpgamdcdgpehopbep"},
        {"msedge-_kjbdgfilnfhdoflbpgamdcdgpehopbep-Profile_1",
         "com.google.Chrome.app.kjbdgfilnfhdoflbpgamdcdgpehopbep"},
    };
    const auto defaults = PresenceDefaults::deferAppBundleIDs();
    for (const auto& [name, identifier] : cases) {
        EXPECT_EQ(callProgramIdentifier(name), identifier) << name;
        EXPECT_NE(std::ranges::find(defaults, identifier), defaults.end()) << identifier;
    }
}

TEST(CallProgramsTest, OtherNamesAreNotMistakenForThem) {
    for (const char* name :
         {"", "zoomer", "Google-chrome", "crx_abc", "abcdefghijklmnopabcdefghijklmnop",
          "crx_abcdefghijklmnopabcdefghijklmnopa", "crx_abcdefghijklmnopabcdefghijklmnoz"}) {
        EXPECT_EQ(callProgramIdentifier(name), std::nullopt) << name;
        EXPECT_FALSE(isWebApplication(name)) << name;
    }
}

}  // namespace
}  // namespace ostrel
