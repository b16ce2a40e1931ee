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
    [[nodiscard]] std::string of(std::optional<int> process, const Names& names) const {
        return applicationIdentifier(fake.table(), process, names).value_or("none");
    }
};

TEST_F(ApplicationIdentifierTest, TheFirstNameThatIsKnownCounts) {
    const Names all{"org.gtk.App", "/usr/share/applications/org.kde.app.desktop", "inst", "Class"};
    const Names kde{"", "org.kde.app", "inst", "Class"};
    const Names classOnly{"", "", "inst", "Class"};
    const Names web{"org.gtk.App", "", "crx_abcdefghijklmnopabcdefghijklmnop", "Google-chrome"};
    EXPECT_EQ(of(kFlatpak, all), "org.example.Player");
    EXPECT_EQ(of(kFlatpak, web), "com.google.Chrome.app.abcdefghijklmnopabcdefghijklmnop");
    EXPECT_EQ(of(kPlain, all), "org.gtk.App");
    EXPECT_EQ(of(std::nullopt, {"", all.desktopFile, "inst", "Class"}), "org.kde.app");
    EXPECT_EQ(of(kPlain, kde), "org.kde.app");
    EXPECT_EQ(of(kPlain, classOnly), "Class");
    EXPECT_EQ(of(kPlain, {"", "", "inst", ""}), "inst");
    EXPECT_EQ(of(kPlain, {}), "none");
    EXPECT_EQ(of(99, classOnly), "Class") << "a process that is gone";
}

TEST_F(ApplicationIdentifierTest, ASandboxIsKnownByItsOwnDescriptionAlone) {
    const Names names{"", "", "", "Class"};
    EXPECT_EQ(of(kSnap, names), "com.tinyspeck.slackmacgap");
    EXPECT_EQ(of(kOldSnap, names), "spotify");
    EXPECT_EQ(of(kChildOfSnap, names), "Class");
    EXPECT_EQ(of(kOddFlatpak, names), "Class");
}

TEST(CallProgramsTest, TheProgramsOfTheDefaultListAreKnownByTheirNamesHere) {
    const std::pair<const char*, const char*> cases[] = {
        {"zoom", "us.zoom.xos"},
        {"zoom ", "us.zoom.xos"},
        {"us.zoom.Zoom", "us.zoom.xos"},
        {"Microsoft Teams - Preview", "com.microsoft.teams"},
        {"teams-for-linux", "com.microsoft.teams2"},
        {"crx_cifhbcnohmdccbgoicgdjpfamggdegmo", "com.microsoft.teams2"},
        {"CiscoCollabHost", "com.cisco.webexmeetingsapp"},
        {"Slack", "com.tinyspeck.slackmacgap"},
        {"com.slack.Slack", "com.tinyspeck.slackmacgap"},
        {"discord", "com.hnc.Discord"},
        {"com.discordapp.Discord", "com.hnc.Discord"},
        {"crx_kjbdgfilnfhdoflbpgamdcdgpehopbep",
         "com.google.Chrome.app.kjbdgfilnfhdoflbpgamdcdgpehopbep"},
        {"chrome-kjbdgfilnfhdoflbpgamdcdgpehopbep-Default",
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
         {"", " ", "zoomer", "XTerm", "Google-chrome", "crx_", "crx_abc",
          "abcdefghijklmnopabcdefghijklmnop", "crx_abcdefghijklmnopabcdefghijklmnopa",
          "crx_abcdefghijklmnopabcdefghijklmnoz", "chrome-abcdefghijklmnopabcdefghijklmnop_x"}) {
        EXPECT_EQ(callProgramIdentifier(name), std::nullopt) << name;
        EXPECT_FALSE(isWebApplication(name)) << name;
    }
}

}  // namespace
}  // namespace ostrel
