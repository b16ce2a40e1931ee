#include "app/desktop/work_windows.h"

#include <QLocale>
#include <utility>

#include "app/desktop/day_planner.h"
#include "app/desktop/session_bus_keeper.h"
#include "app/environment/app_environment.h"
#include "platform/linux/application_name.h"
#include "platform/linux/linux_capabilities.h"
#include "platform/linux/linux_clock.h"
#include "platform/linux/running_applications.h"
#include "platform/linux/virtual_keys.h"
#include "screens/report/report_window.h"
#include "screens/report/save_dialog.h"
#include "screens/settings/settings_window.h"

namespace ostrel {
namespace {

SettingsServices servicesOf(AppEnvironment& environment, const SessionBusKeeper& bus,
                            const std::string& dataFolder, const std::function<void()>& popUpMenu) {
    using Chime = SettingsServices::Chime;
    return {environment.settingsStore(),
            environment.timerEngine(),
            environment.overlayManager(),
            environment.hotkeyRouter(),
            planDay,
            [&environment](Chime chime) {
                ChimePlayer& player = environment.chimePlayer();
                chime == Chime::start ? player.tryStart() : player.tryEnd();
            },
            runningApplications,
            [](const std::string& identifier) {
                return applicationName(identifier, QLocale().name().toStdString());
            },
            [&bus](QObject* receiver, SettingsServices::TellCapabilities tell) {
                findCapabilities(bus.busOrNone(), QDBusConnection::systemBus(), receiver,
                                 std::move(tell));
            },
            virtualKeyCodeOf,
            popUpMenu,
            dataFolder};
}

}  // namespace

WorkWindows::WorkWindows(AppEnvironment& environment, const Calendar& calendar,
                         const SessionBusKeeper& bus, std::string dataFolder,
                         std::function<void()> popUpMenu)
    : environment_(environment),
      calendar_(calendar),
      bus_(bus),
      dataFolder_(std::move(dataFolder)),
      popUpMenu_(std::move(popUpMenu)) {}

WorkWindows::~WorkWindows() {
    delete settings_;
    delete report_;
}

void WorkWindows::showSettings() {
    if (!settings_) {
        settings_ = new SettingsWindow(servicesOf(environment_, bus_, dataFolder_, popUpMenu_));
    }
    settings_->present();
}

void WorkWindows::showReport() {
    if (!report_) {
        report_ = new ReportWindow({environment_.reportSummary(), environment_.breakLog(),
                                    environment_.presenceTally(), environment_.streakTracker(),
                                    environment_.dailyCounter(), environment_.settingsStore(),
                                    calendar_, systemWallTime, askWithSaveDialog});
    }
    report_->present();
}

}  // namespace ostrel
