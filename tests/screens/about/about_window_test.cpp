#include "screens/about/about_window.h"

#include <QLabel>
#include <QPushButton>

#include "screens/gui.h"
#include "screens/texts/texts.h"

namespace ostrel {

struct AboutWindowTest : ::testing::Test {
    AboutWindowTest() {
        Texts::setLanguage("en");
        services = {
            QStringLiteral("1.2.3"),
            {{QStringLiteral("Qt 6"), "about.parts.qt"}},
            QStringLiteral("/home/anna/.config/ostrel"),
            AboutWindow::CrashReport{QStringLiteral("/home/anna/.local/state/ostrel/crash-1.txt"),
                                     QDateTime(QDate(2026, 3, 9), QTime(10, 15))},
            [this](const QString& path) {
                opened.push_back(path);
                return canOpen;
            }};
    }

    AboutWindow& show() {
        window = new AboutWindow(services);
        window->present();
        return *window;
    }
    static QStringList texts(const QWidget& of) {
        QStringList found;
        for (const QLabel* label : of.findChildren<QLabel*>()) {
            if (label->isVisible()) {
                found.push_back(label->text());
            }
        }
        return found;
    }
    ~AboutWindowTest() override { delete window; }

    AboutWindow::Services services;
    QStringList opened;
    bool canOpen = true;
    QPointer<AboutWindow> window;
};

TEST_F(AboutWindowTest, NamesTheVersionAndWhereEverythingLies) {
    const QStringList found = texts(show());
    for (const QString& part :
         {QStringLiteral("Version 1.2.3"), QStringLiteral("Qt 6"), services.documentsFolder,
          services.newestReport->file,
          Texts::of("crash.newest %@", {QLocale().toString(services.newestReport->writtenAt,
                                                           QLocale::ShortFormat)})}) {
        EXPECT_TRUE(found.contains(part)) << part.toStdString();
    }
    EXPECT_FALSE(found.contains(Texts::of("crash.none")));
}

TEST_F(AboutWindowTest, ButtonsOpenTheFolderAndTheReport) {
    AboutWindow& about = show();
    about.findChild<QPushButton*>(QStringLiteral("ostrel.about.open_folder"))->click();
    about.findChild<QPushButton*>(QStringLiteral("ostrel.about.open_report"))->click();
    EXPECT_EQ(opened, (QStringList{services.documentsFolder, services.newestReport->file}));
}

TEST_F(AboutWindowTest, WhatNoProgramOpensIsSaidUntilOneDoes) {
    const QString notice =
        Texts::of("about.not_opened %@",
                  {QStringLiteral("\u2066") + services.documentsFolder + QStringLiteral("\u2069")});
    AboutWindow& about = show();
    auto* button = about.findChild<QPushButton*>(QStringLiteral("ostrel.about.open_folder"));
    EXPECT_FALSE(texts(about).contains(notice));
    canOpen = false;
    button->click();
    EXPECT_TRUE(texts(about).contains(notice));
    canOpen = true;
    button->click();
    EXPECT_FALSE(texts(about).contains(notice));
}

TEST_F(AboutWindowTest, WithoutAReportThereIsNoButtonForIt) {
    services.newestReport.reset();
    AboutWindow& about = show();
    EXPECT_TRUE(texts(about).contains(Texts::of("crash.none")));
    EXPECT_EQ(about.findChild<QPushButton*>(QStringLiteral("ostrel.about.open_report")), nullptr);
}

TEST_F(AboutWindowTest, EscapeClosesIt) {
    sendKey(show(), Qt::Key_Escape);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(window.isNull());
}

}  // namespace ostrel
