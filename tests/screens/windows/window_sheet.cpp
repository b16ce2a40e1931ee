// window_sheet FOLDER LANGUAGE light|dark: a picture of every page of every window, for people to
// look at. QT_SCALE_FACTOR sets the scale.

#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QListWidget>
#include <cstdio>
#include <cstring>

#include "platform/api/appearance_settings.h"
#include "screens/about/about_window.h"
#include "screens/appearance.h"
#include "screens/report/report_window.h"
#include "screens/settings/settings_bench.h"
#include "screens/settings/settings_window.h"
#include "screens/texts/texts.h"
#include "screens/welcome/welcome_window.h"

namespace ostrel {
namespace {

struct NoDesktop : AppearanceSettings {
    [[nodiscard]] std::optional<bool> prefersDark() const override { return std::nullopt; }
};

void settle() {
    for (int i = 0; i < 5; ++i) {
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
    }
}

void photograph(QWidget& window, const QString& file) {
    settle();
    window.grab().save(file);
}

void photographSettings(SettingsBench& bench, const QDir& folder) {
    auto* window = new SettingsWindow(bench.services());
    window->present();
    auto* pages = window->findChild<QListWidget*>(QStringLiteral("ostrel.sidebar"));
    for (int page = 0; page < pages->count(); ++page) {
        pages->setCurrentRow(page);
        photograph(*window, folder.filePath(QStringLiteral("settings-%1.png").arg(page)));
    }
    delete window;
}

void photographReport(SettingsBench& bench, const QDir& folder) {
    AppEnvironment& environment = bench.environment;
    auto* window = new ReportWindow(
        {environment.reportSummary(), environment.breakLog(), environment.presenceTally(),
         environment.streakTracker(), environment.dailyCounter(), bench.store(),
         bench.platform.calendar, [&bench] { return bench.platform.runLoop.wallNow(); },
         [](QWidget&, const SaveQuestion&) { return QString(); }});
    window->present();
    photograph(*window, folder.filePath(QStringLiteral("report.png")));
    delete window;
}

void photographAbout(const QDir& folder) {
    auto* window = new AboutWindow({QStringLiteral("0.1.0"),
                                    {{QStringLiteral("Qt 6"), "about.parts.qt"}},
                                    QStringLiteral("/home/anna/.config/ostrel"),
                                    std::nullopt,
                                    [](const QString&) { return true; }});
    window->present();
    photograph(*window, folder.filePath(QStringLiteral("about.png")));
    delete window;
}

void photographWelcome(SettingsBench& bench, const QDir& folder) {
    auto* window = new WelcomeWindow({bench.store(), bench.environment.timerEngine(), [] {},
                                      [&bench](const auto& tell) { tell(bench.capabilities); },
                                      [](bool) { return true; }});
    window->present();
    for (int page = 0; page < 4; ++page) {
        photograph(*window, folder.filePath(QStringLiteral("welcome-%1.png").arg(page)));
        if (page < 3) {
            window->findChild<QAbstractButton*>(QStringLiteral("ostrel.welcome.continue"))->click();
        }
    }
    delete window;
}

int run(int& argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    if (argc != 4) {
        std::fputs("usage: window_sheet FOLDER LANGUAGE light|dark\n", stderr);
        return 2;
    }
    const QDir folder(QString::fromLocal8Bit(argv[1]));
    folder.mkpath(QStringLiteral("."));
    SettingsBench bench;
    const NoDesktop desktop;
    const Appearance appearance(bench.store(), desktop);
    const bool isDark = std::strcmp(argv[3], "dark") == 0;
    bench.store().update([isDark](SettingsModel& settings) {
        using A = SettingsModel::Appearance;
        settings.appearance = isDark ? A::dark : A::light;
        settings.workHoursEnabled = true;
    });
    Texts::setLanguage(argv[2]);
    QApplication::setLayoutDirection(Texts::isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
    photographSettings(bench, folder);
    photographAbout(folder);
    photographWelcome(bench, folder);
    bench.platform.runLoop.runUpTo(bench.platform.runLoop.now() + std::chrono::hours(6 * 24));
    photographReport(bench, folder);
    return 0;
}

}  // namespace
}  // namespace ostrel

int main(int argc, char** argv) {
    return ostrel::run(argc, argv);
}
