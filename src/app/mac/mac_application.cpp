#include "app/mac/mac_application.h"

#include <QApplication>
#include <QDir>
#include <cstdio>
#include <utility>

#include "app/mac/mac_desktop.h"
#include "app/mac/schedule_nap.h"
#include "app/shell/login_item_sync.h"
#include "app/shell/running_application.h"
#include "platform/macos/mac_bundle.h"
#include "platform/macos/service_login_item.h"
#include "platform/macos/user_defaults_preferences.h"
#include "screens/texts/texts.h"

namespace ostrel {
namespace {

void complain(const LocalizedText& text) {
    std::fprintf(stderr, "ostrel: %s\n", Texts::of(text).toUtf8().constData());
}

// The toolkit tells of being opened once more as of being activated twice. Without a place in the
// menu bar, behind the notch, this is the way to the settings.
void followReopening(const QApplication& application, RunningApplication& running) {
    QObject::connect(
        &application, &QApplication::applicationStateChanged, &application,
        [&running, last = Qt::ApplicationInactive](Qt::ApplicationState state) mutable {
            if (std::exchange(last, state) == Qt::ApplicationActive &&
                state == Qt::ApplicationActive) {
                running.open(AppWindow::app);
            }
        });
}

}  // namespace

int runMacApplication(int& argc, char** argv) {
    // Or the toolkit would bring a program without a window to the front at every login.
    qputenv("QT_MAC_DISABLE_FOREGROUND_APPLICATION_TRANSFORM", "1");
    const QApplication application(argc, argv);
    if (isRunningTwice()) {
        std::fputs("ostrel: it is running already\n", stderr);
        return 0;
    }
    QApplication::setApplicationName(QStringLiteral("ostrel"));
    QApplication::setApplicationDisplayName(QStringLiteral("Ostrel"));
    QApplication::setQuitOnLastWindowClosed(false);
    MacDesktop desktop;
    UserDefaultsPreferences preferences;
    RunningApplication running(
        desktop, preferences,
        (QDir::homePath() + QStringLiteral("/Library/Preferences")).toStdString());
    ServiceLoginItem loginItem;
    LoginItemSync loginItemSync(running.environment().settingsStore(), loginItem);
    const Subscription refusals = loginItemSync.refused.subscribe(complain);
    followReopening(application, running);
    const ScheduleNap nap(running.environment());
    running.support().begin();
    return running.run();
}

}  // namespace ostrel
