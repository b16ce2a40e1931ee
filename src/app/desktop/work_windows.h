#pragma once

#include <QPointer>
#include <functional>
#include <string>

namespace ostrel {

class AppEnvironment;
class SettingsWindow;

// The windows that people come back to: the settings and the report. Each is made when it is asked
// for and gone when it is closed.
class WorkWindows {
  public:
    // The environment outlives it.
    WorkWindows(AppEnvironment& environment, std::string dataFolder,
                std::function<void()> popUpMenu);
    WorkWindows(const WorkWindows&) = delete;
    WorkWindows& operator=(const WorkWindows&) = delete;
    ~WorkWindows();

    void showSettings();

  private:
    AppEnvironment& environment_;
    const std::string dataFolder_;
    const std::function<void()> popUpMenu_;
    QPointer<SettingsWindow> settings_;
};

}  // namespace ostrel
