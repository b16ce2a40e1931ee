// window_sheet FOLDER LANGUAGE light|dark: a picture of every page of every window, for people to
// look at. QT_SCALE_FACTOR sets the scale.

#include <QApplication>
#include <QDir>
#include <QListWidget>
#include <cstdio>
#include <cstring>

#include "platform/api/appearance_settings.h"
#include "screens/appearance.h"
#include "screens/settings/settings_bench.h"
#include "screens/settings/settings_window.h"
#include "screens/texts/texts.h"

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
    return 0;
}

}  // namespace
}  // namespace ostrel

int main(int argc, char** argv) {
    return ostrel::run(argc, argv);
}
