#include "platform/linux/application_name.h"

#include <gtest/gtest.h>

#include <QByteArray>
#include <filesystem>
#include <fstream>

#include "core/settings/settings_defaults.h"
#include "platform/linux/temporary_folder.h"

namespace ostrel {
namespace {

namespace fs = std::filesystem;

// In a folder of data of its own.
struct ApplicationNameTest : ::testing::Test {
    ApplicationNameTest() { qputenv("XDG_DATA_HOME", folder.path().c_str()); }
    ~ApplicationNameTest() override {
        before.isNull() ? qunsetenv("XDG_DATA_HOME") : qputenv("XDG_DATA_HOME", before);
    }

    void write(const std::string& file, const std::string& text) const {
        fs::create_directories(folder.path() / "applications");
        std::ofstream(folder.path() / "applications" / file) << text;
    }

    const QByteArray before = qgetenv("XDG_DATA_HOME");
    TemporaryFolder folder;
};

TEST_F(ApplicationNameTest, IsThatOfTheDesktopFileInTheLanguage) {
    write(
        "org.example.Text.desktop",
        "[Desktop Action new]\nName=New\n[Desktop Entry]\nName=Text\\sEditor\nName[de]=Schreiber\n"
        "Name[pt_BR]=Editor\n");
    write("nameless.desktop", "[Desktop Entry]\nExec=x\n");
    const struct {
        const char* identifier;
        const char* locale;
        const char* name;
    } cases[] = {
        {"org.example.Text", "en_US", "Text Editor"},
        {"org.example.Text", "de_AT", "Schreiber"},
        {"org.example.Text", "pt_BR", "Editor"},
        {"Nameless", "de_DE", "none"},
        {"../applications/org.example.Text", "C", "none"},
        {"", "C", "none"},
        {"com.tinyspeck.slackmacgap", "de_DE", "Slack"},
    };
    for (const auto& [identifier, locale, name] : cases) {
        EXPECT_EQ(applicationName(identifier, locale).value_or("none"), name) << identifier;
    }
    write("chromium.desktop", "[Desktop Entry]\nName=Chromium Browser\n");
    EXPECT_EQ(applicationName("Chromium", "C"), "Chromium Browser") << "from a window's class";
}

TEST_F(ApplicationNameTest, EveryProgramOfTheDefaultListHasOne) {
    for (const std::string& identifier : PresenceDefaults::deferAppBundleIDs()) {
        EXPECT_TRUE(applicationName(identifier, "C")) << identifier;
    }
}

}  // namespace
}  // namespace ostrel
