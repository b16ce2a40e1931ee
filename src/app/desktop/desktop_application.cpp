#include "app/desktop/desktop_application.h"

#include <malloc.h>

#include <QApplication>
#include <QEvent>
#include <QPixmapCache>
#include <QTimer>
#include <QWindow>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <functional>
#include <memory>
#include <utility>

#include "app/desktop/break_trace.h"
#include "app/desktop/control_service.h"
#include "app/desktop/demo.h"
#include "app/desktop/known_languages.h"
#include "app/desktop/login_item_sync.h"
#include "app/desktop/support_windows.h"
#include "app/desktop/work_windows.h"
#include "app/environment/app_environment.h"
#include "platform/calendar/day_watch.h"
#include "platform/calendar/zoned_calendar.h"
#include "platform/linux/autostart_login_item.h"
#include "platform/linux/crash_handler.h"
#include "platform/linux/crash_reports.h"
#include "platform/linux/file_preferences.h"
#include "platform/linux/linux_clock.h"
#include "platform/linux/linux_do_not_disturb.h"
#include "platform/linux/linux_notifications.h"
#include "platform/linux/linux_power_assertions.h"
#include "platform/linux/linux_run_loop.h"
#include "platform/linux/no_haptics.h"
#include "platform/linux/portal_appearance_settings.h"
#include "platform/linux/portal_motion_settings.h"
#include "platform/linux/portal_settings.h"
#include "platform/linux/process_sound_library.h"
#include "platform/linux/qt_displays.h"
#include "platform/linux/session_watch.h"
#include "platform/linux/single_instance.h"
#include "platform/linux/sleep_watch.h"
#include "platform/linux/termination_signals.h"
#include "platform/linux/user_attention.h"
#include "platform/linux/x11_frontmost_application.h"
#include "platform/linux/x11_hotkeys.h"
#include "platform/linux/x11_input_idle.h"
#include "platform/linux/x11_screen_windows.h"
#include "platform/linux/zone_watch.h"
#include "platform/virtual/memory_preferences.h"
#include "screens/accessible_popups.h"
#include "screens/appearance.h"
#include "screens/qt_overlay_window_maker.h"
#include "screens/status_item.h"
#include "screens/texts/texts.h"
#include "screens/toast_surface.h"

namespace ostrel {
namespace {

// It takes the keyboard; that is no user who turns to the program.
bool hasOverlayTheFocus() {
    const QWindow* window = QGuiApplication::focusWindow();
    return window != nullptr && window->flags().testFlag(Qt::X11BypassWindowManagerHint);
}

// The desktop's side of the environment.
class LinuxPlatform {
  public:
    LinuxPlatform()
        : runLoop(systemWallTime),
          calendar(systemTimeZone),
          sounds(QCoreApplication::applicationDirPath().toStdString()),
          clockChanges_(
              runLoop.clockWasSet.subscribe([this] { systemEvents.clockChanged.send(); })) {
        QObject::connect(qGuiApp, &QGuiApplication::applicationStateChanged, &sleepWatch_,
                         [this](Qt::ApplicationState state) {
                             if (state == Qt::ApplicationActive && !hasOverlayTheFocus()) {
                                 systemEvents.didBecomeActive.send();
                             }
                         });
    }

    [[nodiscard]] Platform over(PreferencesStore& preferences, SystemNotifications& notifications,
                                std::function<void(AppWindow)> openWindow) {
        return {runLoop,
                systemWallTime,
                calendar,
                preferences,
                displays,
                systemEvents,
                motion,
                haptics,
                sounds,
                inputIdle,
                notifications,
                overlayWindows,
                randomUuids(),
                {&frontmost, &windows, &assertions, &doNotDisturb,
                 X11Hotkeys::isPossible() ? &hotkeys : nullptr},
                std::move(openWindow),
                requestUserAttention};
    }

    LinuxRunLoop runLoop;
    ZonedCalendar calendar;
    QtDisplays displays;
    SystemEvents systemEvents;
    PortalSettings portal;
    PortalMotionSettings motion{portal};
    PortalAppearanceSettings appearance{portal};
    NoHaptics haptics;
    ProcessSoundLibrary sounds;
    X11InputIdle inputIdle;
    X11FrontmostApplication frontmost;
    X11ScreenWindows windows;
    LinuxPowerAssertions assertions{LinuxPowerAssertions::buses(), runLoop, windows};
    LinuxDoNotDisturb doNotDisturb;
    X11Hotkeys hotkeys;
    QtOverlayWindowMaker overlayWindows;

  private:
    Subscription clockChanges_;
    SleepWatch sleepWatch_{systemEvents, runLoop};
    ZoneWatch zoneWatch_{systemEvents};
    DayWatch dayWatch_{systemEvents, calendar, runLoop, systemWallTime};
    SessionWatch sessionWatch_{systemEvents};
};

// The language of the texts, and the direction of everything with it.
Subscription followLanguage(SettingsStore& settingsStore) {
    auto adopt = [current = std::string()](const SettingsModel& settings) mutable {
        if (settings.languageRaw == current) {
            return;
        }
        current = settings.languageRaw;
        Texts::setLanguage(settings.languageRaw);
        QApplication::setLayoutDirection(Texts::isRightToLeft() ? Qt::RightToLeft
                                                                : Qt::LeftToRight);
        // Not at once: what is made anew may be what changed the language.
        for (QWidget* window : QApplication::topLevelWidgets()) {
            QCoreApplication::postEvent(window, new QEvent(QEvent::LanguageChange));
        }
    };
    adopt(*settingsStore.settings());
    return settingsStore.settings().onChange(std::move(adopt));
}

// The application between launch and quit, over any preferences.
class RunningApplication {
  public:
    RunningApplication(LinuxPlatform& platform, PreferencesStore& preferences,
                       const std::string& dataFolder)
        : notifications_({platform.runLoop, platform.calendar, systemWallTime,
                          platform.systemEvents, preferences,
                          [](const LocalizedText& text) { return Texts::of(text); }}),
          environment(platform.over(preferences, notifications_,
                                    [this](AppWindow window) { open(window); })),
          failures_(preferences.persistenceWriteFailed.subscribe(
              [this](const PersistenceError& error) { tellFailure(error); })),
          trace_(environment),
          language_(followLanguage(environment.settingsStore())),
          appearance_(environment.settingsStore(), platform.appearance),
          toastSurface_(environment.toastDispatcher(), platform.motion,
                        [this] { return appearance_.isDark() ? Shade::dark : Shade::light; }),
          coverings_(platform.systemEvents.isSessionOnScreen.onChange(
              [this](const bool& isOnScreen) { toastSurface_.setCovered(!isOnScreen); })),
          statusItem({environment.timerEngine(), environment.sessionStateStore(),
                      environment.settingsStore(), environment.overlayManager(),
                      environment.dailyCounter(),
                      [this] { return environment.workHoursGate().workUntil(); },
                      [this] { windows.showSettings(); }, [this] { windows.showReport(); },
                      [this] { support.showAbout(); }, [] { QApplication::quit(); }}),
          windows(environment, platform.calendar, dataFolder, [this] { statusItem.popUpMenu(); }),
          support(environment, platform.motion, {dataFolder, defaultStateFolder()}),
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

  private:
    using Shade = ToastCard::Shade;

    LinuxNotifications notifications_;

  public:
    AppEnvironment environment;

    void open(AppWindow window) {
        window == AppWindow::report ? windows.showReport() : windows.showSettings();
    }

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

    bool hasFailed_ = false;
    StatusItem* teller_ = nullptr;
    Subscription failures_;
    BreakTrace trace_;
    Subscription language_;
    Appearance appearance_;
    ToastSurface toastSurface_;
    Subscription coverings_;

  public:
    StatusItem statusItem;
    WorkWindows windows;
    SupportWindows support;

  private:
    TerminationSignals signals_;
    Subscription termination_;
};

int runDemo(LinuxPlatform& platform, const DesktopOptions& options) {
    MemoryPreferences preferences;
    Demo::writeSettings(preferences);
    RunningApplication application(platform, preferences, {});
    const Demo demo(application.environment, platform.runLoop, options.screenshotFolder);
    return application.run();
}

void writeCrashReports() {
    if (areFaultsSeenBySanitizer()) {
        return;
    }
    const std::filesystem::path folder = defaultStateFolder();
    CrashReports(folder).prune();
    if (const int error = installCrashHandler(folder, OSTREL_VERSION); error != 0) {
        std::fprintf(stderr, "ostrel: no crash reports in %s: %s\n", folder.c_str(),
                     std::strerror(error));
    }
}

int runForReal(LinuxPlatform& platform) {
    const std::string folder = defaultPreferencesFolder().string();
    SingleInstance instance(folder);
    if (instance.role() == SingleInstance::Role::second) {
        std::puts(instance.activateFirst() ? "Ostrel is running already: its window opens."
                                           : "Ostrel is running already, but does not answer.");
        return 0;
    }
    writeCrashReports();
    FilePreferences preferences(folder, platform.runLoop);
    RunningApplication application(platform, preferences, folder);
    AutostartLoginItem loginItem(AutostartLoginItem::Places::ofThisSession());
    const LoginItemSync loginItemSync(application.environment.settingsStore(), loginItem);
    application.support.begin();
    const Subscription activation =
        instance.activated.subscribe([&application] { application.windows.showSettings(); });
    const ControlService control({application.environment, platform.calendar, systemWallTime,
                                  knownLanguages(),
                                  [&application](AppWindow window) { application.open(window); }});
    return application.run();
}

// A picture of a whole display is given back to the system when a break is over. Left to itself the
// allocator takes the first such block for the usual size and keeps all later ones.
void giveLargeBlocksBack() {
    constexpr int kLargeBlockBytes = 256 * 1024;
    mallopt(M_MMAP_THRESHOLD, kLargeBlockBytes);
}

// What a window took is of no use until the next one. Not at once: it is still being taken down.
void giveBackAfterLastWindow(const QApplication& application) {
    constexpr int kSoonMs = 1000;
    QObject::connect(&application, &QGuiApplication::lastWindowClosed, &application, [] {
        QTimer::singleShot(kSoonMs, qApp, [] {
            QPixmapCache::clear();
            malloc_trim(0);
        });
    });
}

}  // namespace

int runDesktopApplication(int& argc, char** argv, const DesktopOptions& options) {
    giveLargeBlocksBack();
    installAccessiblePopups();
    const QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("ostrel"));
    QApplication::setApplicationDisplayName(QStringLiteral("Ostrel"));
    QApplication::setDesktopFileName(QStringLiteral("org.ostrel.Ostrel"));
    QApplication::setQuitOnLastWindowClosed(false);
    giveBackAfterLastWindow(application);
    LinuxPlatform platform;
    return options.action == DesktopOptions::Action::demo ? runDemo(platform, options)
                                                          : runForReal(platform);
}

}  // namespace ostrel
