#include "platform/linux/autostart_login_item.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <fstream>
#include <iterator>

#include "platform/linux/temporary_folder.h"

namespace ostrel {
namespace {

namespace fs = std::filesystem;

struct AutostartLoginItemTest : ::testing::Test {
    AutostartLoginItemTest() {
        fs::create_directories(system());
        write(program(), "#!/bin/sh\n");
        chmod(program().c_str(), 0700);
    }

    fs::path user() const { return folder.path() / "config" / "autostart"; }
    fs::path system() const { return folder.path() / "xdg" / "autostart"; }
    fs::path program() const { return folder.path() / "ostrel"; }
    fs::path userFile() const { return user() / "ostrel.desktop"; }

    AutostartLoginItem item(const std::string& path) const {
        return AutostartLoginItem(
            {user(), {folder.path() / "none", system()}, path, {"XFCE", "X"}});
    }
    AutostartLoginItem item() const { return item(program()); }

    static void write(const fs::path& file, const std::string& text) {
        fs::create_directories(file.parent_path());
        std::ofstream(file) << text;
    }
    static std::string read(const fs::path& file) {
        std::ifstream stream(file);
        return {std::istreambuf_iterator<char>(stream), {}};
    }
    std::string lineOf(const std::string& key) const {
        const std::string text = read(userFile());
        const auto at = text.find("\n" + key + "=");
        return at == std::string::npos ? "" : text.substr(at + 1, text.find('\n', at + 1) - at - 1);
    }

    TemporaryFolder folder;
};

TEST_F(AutostartLoginItemTest, IsOnFromTheFirstSwitchToTheNextAndLeavesNothing) {
    EXPECT_FALSE(item().isEnabled());
    EXPECT_TRUE(item().setEnabled(true));
    EXPECT_TRUE(item().isEnabled());
    EXPECT_EQ(lineOf("Type"), "Type=Application");
    EXPECT_EQ(lineOf("Exec"), "Exec=\"" + program().string() + "\"");
    EXPECT_TRUE(item().setEnabled(false));
    EXPECT_FALSE(item().isEnabled());
    EXPECT_TRUE(fs::is_empty(user()));
    EXPECT_TRUE(item().setEnabled(false)) << "off already";
}

// Twice quoted: as an argument of the command line, and as a value of the file.
TEST_F(AutostartLoginItemTest, AnyPathIsOneArgumentOfTheCommandLine) {
    const struct {
        const char* path;
        const char* exec;
        const char* tryExec;
    } cases[] = {
        {"/opt/my apps/100%/ostrel", R"("/opt/my apps/100%%/ostrel")", "/opt/my apps/100%/ostrel"},
        {R"(/opt/$a`b"c/o)", R"("/opt/\\$a\\`b\\"c/o")", R"(/opt/$a`b"c/o)"},
        {R"(/opt/a\b/o)", R"("/opt/a\\\\b/o")", R"(/opt/a\\b/o)"},
    };
    for (const auto& [path, exec, tryExec] : cases) {
        EXPECT_TRUE(item(path).setEnabled(true));
        EXPECT_EQ(lineOf("Exec"), std::string("Exec=") + exec);
        EXPECT_EQ(lineOf("TryExec"), std::string("TryExec=") + tryExec);
    }
}

TEST_F(AutostartLoginItemTest, ReadsWhatTheDesktopsToolsMakeOfTheFile) {
    const std::string entry = "[Desktop Entry]\nType=Application\nExec=ostrel\n";
    const struct {
        std::string text;
        bool isEnabled;
    } cases[] = {
        {entry, true},
        {entry + "Hidden = true\r\n", false},
        {entry + "#Hidden=true\n[Desktop Action x]\nHidden=true\n", true},
        {entry + "X-GNOME-Autostart-enabled=false\n", false},
        {entry + "OnlyShowIn=GNOME;XFCE;\n", true},
        {entry + "OnlyShowIn=GNOME;KDE;\n", false},
        {entry + "NotShowIn=XFCE;\n", false},
        {entry + "TryExec=" + program().string() + "\n", true},
        {entry + "TryExec=/nonexistent/ostrel\n", false},
        {"[Desktop Entry]\nType=Application\n", false},
        {"", false},
    };
    for (const auto& [text, isEnabled] : cases) {
        write(userFile(), text);
        EXPECT_EQ(item().isEnabled(), isEnabled) << text;
        EXPECT_TRUE(item().setEnabled(true));
        EXPECT_TRUE(item().isEnabled()) << "after " << text;
    }
}

TEST_F(AutostartLoginItemTest, AnEntryForEverybodyIsHiddenForThisUserWhereThatCanBeWritten) {
    write(system() / "ostrel.desktop", "[Desktop Entry]\nType=Application\nExec=ostrel\n");
    EXPECT_TRUE(item().setEnabled(false));
    EXPECT_FALSE(item().isEnabled());
    EXPECT_TRUE(fs::exists(system() / "ostrel.desktop"));
    EXPECT_TRUE(item().setEnabled(true));
    EXPECT_TRUE(item().isEnabled());

    fs::remove_all(folder.path() / "config");
    write(folder.path() / "config", "a file where the folder belongs");
    EXPECT_FALSE(item().setEnabled(false));
    EXPECT_TRUE(item().isEnabled());
    fs::remove(system() / "ostrel.desktop");
    EXPECT_FALSE(item().setEnabled(true));
    EXPECT_FALSE(item().isEnabled());
}

}  // namespace
}  // namespace ostrel
