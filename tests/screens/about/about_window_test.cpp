#include "screens/about/about_window.h"

#include <QLabel>
#include <QPushButton>
#include <algorithm>

#include "screens/gui.h"
#include "screens/texts/texts.h"

namespace ostrel {

bool isRead(const QWidget& window, const QString& text) {
    return std::ranges::any_of(window.findChildren<QLabel*>(), [&text](const QLabel* label) {
        return label->isVisible() && label->text() == text;
    });
}

TEST(AboutWindow, OpensTheFolderAndTheReportAndSaysWhatNoProgramOpens) {
    Texts::setLanguage("en");
    QStringList opened;
    bool canOpen = true;
    const QString folder = QStringLiteral("/home/anna/.config/ostrel");
    const QString report = QStringLiteral("/home/anna/.local/state/ostrel/crash-1.txt");
    auto* window = new AboutWindow(
        {QStringLiteral("1.2.3"),
         {},
         folder,
         AboutWindow::CrashReport{report, QDateTime(QDate(2026, 3, 9), QTime(10, 15))},
         [&](const QString& path) {
             opened.push_back(path);
             return canOpen;
         }});
    window->present();
    auto* button = window->findChild<QPushButton*>(QStringLiteral("ostrel.about.open_folder"));
    button->click();
    window->findChild<QPushButton*>(QStringLiteral("ostrel.about.open_report"))->click();
    EXPECT_EQ(opened, (QStringList{folder, report}));

    const QString notice = Texts::of(
        "about.not_opened %@", {QStringLiteral("\u2066") + folder + QStringLiteral("\u2069")});
    EXPECT_FALSE(isRead(*window, notice));
    canOpen = false;
    button->click();
    EXPECT_TRUE(isRead(*window, notice));
    delete window;
}

}  // namespace ostrel
