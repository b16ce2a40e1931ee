#include "app/shell/work_windows.h"

#include <utility>

#include "app/environment/app_environment.h"
#include "app/shell/day_planner.h"
#include "app/shell/desktop_system.h"
#include "screens/report/report_window.h"
#include "screens/report/save_dialog.h"
#include "screens/settings/settings_window.h"

namespace ostrel {
namespace {

SettingsServices servicesOf(AppEnvironment& environment, DesktopSystem& desktop,
                            const std::string& dataFolder, const std::function<void()>& popUpMenu) {
    using Chime = SettingsServices::Chime;
    DesktopSystem::Questions questions = desktop.questions();
    return {environment.settingsStore(),
            environment.timerEngine(),
            environment.overlayManager(),
            environment.hotkeyRouter(),
            planDay,
            [&environment](Chime chime) {
                ChimePlayer& player = environment.chimePlayer();
                chime == Chime::start ? player.tryStart() : player.tryEnd();
            },
            std::move(questions.runningPrograms),
            std::move(questions.programName),
            std::move(questions.findCapabilities),
            std::move(questions.virtualKeyCode),
            popUpMenu,
            dataFolder};
}

}  // namespace

WorkWindows::WorkWindows(AppEnvironment& environment, DesktopSystem& desktop,
                         std::string dataFolder, std::function<void()> popUpMenu)
    : environment_(environment),
      desktop_(desktop),
      dataFolder_(std::move(dataFolder)),
      popUpMenu_(std::move(popUpMenu)) {}

WorkWindows::~WorkWindows() {
    delete settings_;
    delete report_;
}

void WorkWindows::showSettings() {
    if (!settings_) {
        settings_ = new SettingsWindow(servicesOf(environment_, desktop_, dataFolder_, popUpMenu_));
    }
    settings_->present();
}

void WorkWindows::showReport() {
    if (!report_) {
        report_ = new ReportWindow({environment_.reportSummary(), environment_.breakLog(),
                                    environment_.presenceTally(), environment_.streakTracker(),
                                    environment_.dailyCounter(), environment_.settingsStore(),
                                    desktop_.calendar(), desktop_.now(), askWithSaveDialog});
    }
    report_->present();
}

}  // namespace ostrel
