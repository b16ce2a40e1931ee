#pragma once

#include <QPointer>
#include <functional>
#include <string>

namespace ostrel {

class AppEnvironment;
class DesktopSystem;
class ReportWindow;
class SettingsWindow;

// The windows that people come back to: the settings and the report. Each is made when it is asked
// for and gone when it is closed.
class WorkWindows {
  public:
    // What is handed over as a reference outlives it.
    WorkWindows(AppEnvironment& environment, DesktopSystem& desktop, std::string dataFolder,
                std::function<void()> popUpMenu);
    WorkWindows(const WorkWindows&) = delete;
    WorkWindows& operator=(const WorkWindows&) = delete;
    ~WorkWindows();

    void showSettings();
    void showReport();

  private:
    AppEnvironment& environment_;
    DesktopSystem& desktop_;
    const std::string dataFolder_;
    const std::function<void()> popUpMenu_;
    QPointer<SettingsWindow> settings_;
    QPointer<ReportWindow> report_;
};

}  // namespace ostrel
