#include "app/mac/mac_application.h"

#include <QApplication>
#include <QDir>
#include <cstdio>
#include <memory>

#include "app/mac/mac_desktop.h"
#include "app/mac/schedule_nap.h"
#include "app/shell/login_item_sync.h"
#include "app/shell/running_application.h"
#include "platform/macos/service_login_item.h"
#include "platform/macos/user_defaults_preferences.h"
#include "screens/texts/texts.h"

namespace ostrel {
namespace {

void complain(const LocalizedText& text) {
    std::fprintf(stderr, "ostrel: %s\n", Texts::of(text).toUtf8().constData());
}

}  // namespace

int runMacApplication(int& argc, char** argv) {
    const QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("ostrel"));
    QApplication::setApplicationDisplayName(QStringLiteral("Ostrel"));
    QApplication::setQuitOnLastWindowClosed(false);
    MacDesktop desktop;
    UserDefaultsPreferences preferences;
    RunningApplication running(
        desktop, preferences,
        (QDir::homePath() + QStringLiteral("/Library/Preferences")).toStdString());
    ServiceLoginItem loginItem;
    std::unique_ptr<LoginItemSync> loginItemSync;
    Subscription refusals;
    if (ServiceLoginItem::isOffered()) {
        loginItemSync =
            std::make_unique<LoginItemSync>(running.environment().settingsStore(), loginItem);
        refusals = loginItemSync->refused.subscribe(complain);
    }
    const ScheduleNap nap(running.environment());
    running.support().begin();
    return running.run();
}

}  // namespace ostrel
