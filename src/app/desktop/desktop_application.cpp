#include "app/desktop/desktop_application.h"

#include <malloc.h>

#include <QApplication>
#include <QPalette>
#include <cstdio>
#include <memory>
#include <optional>

#include "app/desktop/break_trace.h"
#include "app/desktop/demo.h"
#include "app/environment/app_environment.h"
#include "platform/calendar/zoned_calendar.h"
#include "platform/linux/file_preferences.h"
#include "platform/linux/linux_clock.h"
#include "platform/linux/linux_run_loop.h"
#include "platform/linux/no_haptics.h"
#include "platform/linux/portal_motion_settings.h"
#include "platform/linux/qt_displays.h"
#include "platform/linux/single_instance.h"
#include "platform/linux/termination_signals.h"
#include "platform/linux/x11_input_idle.h"
#include "platform/virtual/memory_preferences.h"
#include "screens/qt_overlay_window_maker.h"
#include "screens/status_item.h"
#include "screens/toast_surface.h"

namespace ostrel {
namespace {

// Until there is something that shows them.
class NoNotifications : public SystemNotifications {
  public:
    void registerCategories(std::vector<NotificationCategory>) override {}
    void add(const NotificationRequest&) override {}
    void removePending(const std::string&) override {}
    void removeDelivered(const std::string&) override {}
    [[nodiscard]] Authorization authorization() const override { return Authorization::denied; }
};

// The desktop's side of the environment.
class LinuxPlatform {
  public:
    LinuxPlatform()
        : runLoop(systemWallTime),
          calendar(systemTimeZone),
          clockChanges_(
              runLoop.clockWasSet.subscribe([this] { systemEvents.clockChanged.send(); })) {}

    [[nodiscard]] Platform over(PreferencesStore& preferences) {
        return {runLoop, systemWallTime, calendar,  preferences,   displays,       systemEvents,
                motion,  haptics,        inputIdle, notifications, overlayWindows, randomUuids()};
    }

    LinuxRunLoop runLoop;
    ZonedCalendar calendar;
    QtDisplays displays;
    SystemEvents systemEvents;
    PortalMotionSettings motion;
    NoHaptics haptics;
    X11InputIdle inputIdle;
    NoNotifications notifications;
    QtOverlayWindowMaker overlayWindows;

  private:
    Subscription clockChanges_;
};

// The application between launch and quit, over any preferences.
class RunningApplication {
  public:
    RunningApplication(LinuxPlatform& platform, PreferencesStore& preferences)
        : environment(platform.over(preferences)),
          failures_(preferences.persistenceWriteFailed.subscribe(
              [this](const PersistenceError& error) { tellFailure(error); })),
          trace_(environment),
          toastSurface_(environment.toastDispatcher(), platform.motion, [this] { return shade(); }),
          statusItem({environment.timerEngine(), environment.sessionStateStore(),
                      environment.settingsStore(), environment.overlayManager(),
                      [] { QApplication::quit(); }}),
          termination_(signals_.received.subscribe([] { QApplication::quit(); })) {
        teller_ = &statusItem;
        if (hasFailed_) {
            statusItem.tellNotSaved();
        }
    }
    RunningApplication(const RunningApplication&) = delete;
    RunningApplication& operator=(const RunningApplication&) = delete;

    int run() {
        environment.launch();
        const int status = QApplication::exec();
        environment.quit();
        return status;
    }

    AppEnvironment environment;

  private:
    // The very first record may fail, before there is a status item to tell it.
    void tellFailure(const PersistenceError& error) {
        std::fprintf(stderr, "ostrel: %s could not be saved: %s\n", error.key.c_str(),
                     error.description.c_str());
        hasFailed_ = true;
        if (teller_) {
            teller_->tellNotSaved();
        }
    }

    [[nodiscard]] ToastCard::Shade shade() {
        using Appearance = SettingsModel::Appearance;
        const Appearance appearance = environment.settingsStore().settings()->appearance;
        const bool isDesktopDark =
            QApplication::palette().color(QPalette::Window).lightnessF() < 0.5F;
        const bool isDark =
            appearance == Appearance::dark || (appearance == Appearance::system && isDesktopDark);
        return isDark ? ToastCard::Shade::dark : ToastCard::Shade::light;
    }

    bool hasFailed_ = false;
    StatusItem* teller_ = nullptr;
    Subscription failures_;
    BreakTrace trace_;
    ToastSurface toastSurface_;

  public:
    StatusItem statusItem;

  private:
    TerminationSignals signals_;
    Subscription termination_;
};

int runDemo(LinuxPlatform& platform, const DesktopOptions& options) {
    MemoryPreferences preferences;
    Demo::writeSettings(preferences);
    RunningApplication application(platform, preferences);
    const Demo demo(application.environment, platform.runLoop, options.screenshotFolder);
    return application.run();
}

int runForReal(LinuxPlatform& platform) {
    const std::string folder = defaultPreferencesFolder().string();
    SingleInstance instance(folder);
    if (instance.role() == SingleInstance::Role::second) {
        std::puts(instance.activateFirst() ? "Ostrel is running already: its menu opens."
                                           : "Ostrel is running already, but does not answer.");
        return 0;
    }
    FilePreferences preferences(folder, platform.runLoop);
    RunningApplication application(platform, preferences);
    const Subscription activation =
        instance.activated.subscribe([&application] { application.statusItem.popUpMenu(); });
    return application.run();
}

// A picture of a whole display is given back to the system when a break is over. Left to itself the
// allocator takes the first such block for the usual size and keeps all later ones.
void giveLargeBlocksBack() {
    constexpr int kLargeBlockBytes = 256 * 1024;
    mallopt(M_MMAP_THRESHOLD, kLargeBlockBytes);
}

}  // namespace

int runDesktopApplication(int& argc, char** argv, const DesktopOptions& options) {
    giveLargeBlocksBack();
    const QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("ostrel"));
    QApplication::setApplicationDisplayName(QStringLiteral("Ostrel"));
    QApplication::setDesktopFileName(QStringLiteral("ostrel"));
    QApplication::setQuitOnLastWindowClosed(false);
    LinuxPlatform platform;
    return options.action == DesktopOptions::Action::demo ? runDemo(platform, options)
                                                          : runForReal(platform);
}

}  // namespace ostrel
