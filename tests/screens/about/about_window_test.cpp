#include "screens/about/about_window.h"

#include <QLabel>
#include <algorithm>

#include "screens/gui.h"
#include "screens/overflow.h"
#include "screens/texts/texts.h"

namespace ostrel {

const QString kFolder = QStringLiteral("/home/anna/.config/ostrel");
const QString kReport = QStringLiteral("/home/anna/.local/state/ostrel/crash-1.txt");

struct AboutWindowTest : ::testing::Test {
    ~AboutWindowTest() override { delete window; }

    void show(std::optional<AboutWindow::CrashReport> report = {}) {
        window = new AboutWindow({QStringLiteral("1.2.3"),
                                  {{QStringLiteral("Qt 6"), "about.parts.qt"},
                                   {QStringLiteral("libxcb"), "about.parts.xcb"}},
                                  kFolder,
                                  std::move(report),
                                  [this](const QString& path) {
                                      opened = path;
                                      return hasProgram;
                                  }});
        window->present();
    }
    static AboutWindow::CrashReport report() {
        return {kReport, QDateTime(QDate(2026, 3, 2), QTime(14, 5))};
    }
    bool says(const QString& text) {
        return std::ranges::any_of(window->findChildren<QLabel*>(), [&text](const QLabel* one) {
            return one->isVisible() && one->text() == text;
        });
    }
    void press(const char* name) {
        window
            ->findChild<QAbstractButton*>(QStringLiteral("ostrel.about.") +
                                          QString::fromLatin1(name))
            ->click();
    }

    AboutWindow* window = nullptr;
    QString opened;
    bool hasProgram = true;
};

TEST_F(AboutWindowTest, OpensTheFolderAndTheReportAndSaysWhenNobodyCan) {
    show(report());
    const auto notice = [](const QString& path) {
        return Texts::of("about.not_opened %@", {QChar(0x2066) + path + QChar(0x2069)});
    };
    const std::pair<const char*, QString> cases[] = {{"open_folder", kFolder},
                                                     {"open_report", kReport}};
    for (const auto& [button, path] : cases) {
        for (const bool canOpen : {true, false, true}) {
            hasProgram = canOpen;
            press(button);
            EXPECT_EQ(opened, path);
            EXPECT_EQ(says(notice(path)), !canOpen) << button;
        }
    }
}

TEST_F(AboutWindowTest, WithoutAReportThereIsNothingToOpen) {
    show();
    EXPECT_TRUE(says(Texts::of("crash.none")));
    EXPECT_EQ(window->findChild<QAbstractButton*>(QStringLiteral("ostrel.about.open_report")),
              nullptr);
}

// Also with both notices on it.
TEST_F(AboutWindowTest, EveryTextHasRoomInEveryLanguage) {
    show(report());
    hasProgram = false;
    expectRoomInEveryLanguage(*window, 1, [this](int) {
        press("open_folder");
        press("open_report");
    });
}

}  // namespace ostrel
