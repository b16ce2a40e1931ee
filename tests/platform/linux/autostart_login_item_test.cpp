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
    bool hasLine(const std::string& line) const {
        std::ifstream stream(userFile());
        const std::string text(std::istreambuf_iterator<char>(stream), {});
        return text.find("\n" + line + "\n") != std::string::npos;
    }

    TemporaryFolder folder;
};

// Twice quoted: as an argument of the command line, and as a value of the file.
TEST_F(AutostartLoginItemTest,
       AnyPathIsOneArgumentOfTheCommandLineBesideThePurposeInEveryLanguage) {
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
        EXPECT_TRUE(hasLine(std::string("Exec=") + exec)) << exec;
        EXPECT_TRUE(hasLine(std::string("TryExec=") + tryExec)) << tryExec;
    }
    EXPECT_TRUE(hasLine("Comment[de]=Erinnert dich daran, die Augen auszuruhen und aufzustehen"));
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
        {entry + "OnlyShowIn=GNOME;KDE;\n", false},
        {entry + "TryExec=/nonexistent/ostrel\n", false},
        {"[Desktop Entry]\nType=Application\n", false},
        {"", false},
    };
    for (const auto& [text, isEnabled] : cases) {
        write(userFile(), text);
        EXPECT_EQ(item().isEnabled(), isEnabled) << text;
        EXPECT_TRUE(item().setEnabled(true));
        EXPECT_TRUE(item().isEnabled()) << "after " << text;
        EXPECT_TRUE(item().setEnabled(false));
        EXPECT_TRUE(fs::is_empty(user()));
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
