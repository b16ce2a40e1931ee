#pragma once

#include <memory>
#include <string>
#include <vector>

#include "app/environment/app_environment.h"
#include "app/shell/break_trace.h"
#include "app/shell/desktop_system.h"
#include "app/shell/support_windows.h"
#include "app/shell/work_windows.h"
#include "base/subscription.h"
#include "screens/appearance.h"
#include "screens/toast_surface.h"

namespace ostrel {

// The application between launch and quit, on any desktop and over any preferences.
class RunningApplication {
  public:
    // Both outlive it. `dataFolder` is where a person finds the preferences.
    RunningApplication(DesktopSystem& desktop, PreferencesStore& preferences,
                       const std::string& dataFolder);
    RunningApplication(const RunningApplication&) = delete;
    RunningApplication& operator=(const RunningApplication&) = delete;
    ~RunningApplication();

    // Returns the status of the process.
    int run();

    void open(AppWindow window);

    [[nodiscard]] AppEnvironment& environment() { return environment_; }
    [[nodiscard]] WorkWindows& windows() { return windows_; }
    [[nodiscard]] SupportWindows& support() { return support_; }

  private:
    void tellFailure(const PersistenceError& error);
    void putUpStatusPresence();

    DesktopSystem& desktop_;
    std::unique_ptr<SystemNotifications> notifications_;
    AppEnvironment environment_;
    bool hasFailed_ = false;
    std::unique_ptr<StatusPresence> status_;
    Subscription failures_;
    BreakTrace trace_;
    Subscription language_;
    Appearance appearance_;
    ToastSurface toastSurface_;
    WorkWindows windows_;
    SupportWindows support_;
    std::vector<Subscription> subscriptions_;
};

}  // namespace ostrel
