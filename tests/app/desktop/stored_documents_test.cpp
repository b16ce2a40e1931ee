#include "app/desktop/stored_documents.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <map>

#include "core/settings/settings_store.h"
#include "platform/linux/single_instance.h"
#include "platform/linux/temporary_folder.h"
#include "screens/gui.h"

namespace ostrel {
namespace {

namespace fs = std::filesystem;

struct StoredDocumentsTest : ::testing::Test {
    void write(const char* name, const std::string& bytes) {
        fs::create_directories(folder);
        std::ofstream(folder / name) << bytes;
    }
    // Everything in the folder, by name.
    [[nodiscard]] std::map<std::string, std::string> files() const {
        std::map<std::string, std::string> all;
        std::error_code none;
        for (const auto& file : fs::directory_iterator(folder, none)) {
            std::ifstream in(file.path());
            all[file.path().filename()] = std::string(std::istreambuf_iterator<char>(in), {});
        }
        return all;
    }

    TemporaryFolder base;
    fs::path folder = base.path() / "ostrel";
    StoredDocuments documents{folder};
};

TEST_F(StoredDocumentsTest, TheReportHasGoalAndStreakAndLookingChangesNothing) {
    write("ostrel.settings.v1.json",
          R"({"remindersMigrated":false,"notifyBreakSoon":true,"dailyGoalBreaks":3})");
    write("ostrel.streak.v1.json", R"({"earlierDays":0,"longestDays":5,"recent":[]})");
    write("ostrel.breakLog.v1.json", "damaged");
    write("ostrel.lock", "");
    const auto before = files();
    EXPECT_EQ(documents.settings().breakSoonLeadSec, 120);
    EXPECT_FALSE(documents.areInUse());
    const Json report = parseJson(documents.report("weekly", "json").text).value();
    EXPECT_EQ(report["dailyGoalBreaks"], 3);
    EXPECT_EQ(report["longestStreakDays"], 5);
    EXPECT_EQ(files(), before);
}

TEST_F(StoredDocumentsTest, ADiskThatTakesNothingIsToldOf) {
    std::ofstream(folder) << "no folder";
    const ControlOutcome outcome = documents.change([](SettingsStore& store) {
        store.update([](SettingsModel& settings) { settings.strictMode = true; });
        return ControlOutcome::done();
    });
    EXPECT_EQ(outcome.reason.key, "cli.error.not_saved %@");
}

}  // namespace
}  // namespace ostrel
