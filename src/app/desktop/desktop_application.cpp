#include "app/desktop/desktop_application.h"

#include <malloc.h>

#include <QApplication>
#include <QEvent>
#include <QPixmapCache>
#include <QTimer>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <functional>
#include <memory>
#include <utility>

#include "app/desktop/break_trace.h"
#include "app/desktop/command_output.h"
#include "app/desktop/control_service.h"
#include "app/desktop/demo.h"
#include "app/desktop/known_languages.h"
#include "app/desktop/linux_platform.h"
#include "app/desktop/login_item_sync.h"
#include "app/desktop/stored_documents.h"
#include "app/desktop/support_windows.h"
#include "app/desktop/work_windows.h"
#include "app/environment/app_environment.h"
#include "platform/linux/autostart_login_item.h"
#include "platform/linux/crash_handler.h"
#include "platform/linux/crash_reports.h"
#include "platform/linux/display_probe.h"
#include "platform/linux/file_preferences.h"
#include "platform/linux/linux_clock.h"
#include "platform/linux/linux_notifications.h"
#include "platform/linux/memory_release.h"
#include "platform/linux/single_instance.h"
#include "platform/linux/termination_signals.h"
#include "platform/virtual/memory_preferences.h"
#include "screens/accessible_popups.h"
#include "screens/appearance.h"
#include "screens/status_item.h"
#include "screens/texts/texts.h"
#include "screens/texts/toolkit_texts.h"
#include "screens/toast_surface.h"

namespace ostrel {
namespace {

// The language of the texts, and the direction of everything with it.
Subscription followLanguage(SettingsStore& settingsStore) {
    auto adopt = [current = std::string(), toolkit = std::make_shared<Texts::ToolkitTexts>()](
                     const SettingsModel& settings) mutable {
        if (settings.languageRaw == current) {
            return;
        }
        current = settings.languageRaw;
        Texts::setLanguage(settings.languageRaw);
        toolkit->setLanguage(Texts::language());
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
        : notifications_({platform.runLoop(), platform.calendar(), systemWallTime,
                          platform.systemEvents(), preferences,
                          [](const LocalizedText& text) { return Texts::of(text); }}),
          environment(platform.over(preferences, notifications_,
                                    [this](AppWindow window) { open(window); })),
          failures_(preferences.persistenceWriteFailed.subscribe(
              [this](const PersistenceError& error) { tellFailure(error); })),
          trace_(environment),
          language_(followLanguage(environment.settingsStore())),
          appearance_(environment.settingsStore(), platform.appearance()),
          toastSurface_(environment.toastDispatcher(), platform.motion(),
                        [this] { return appearance_.isDark() ? Shade::dark : Shade::light; }),
          coverings_(platform.systemEvents().isSessionOnScreen.onChange(
              [this](const bool& isOnScreen) { toastSurface_.setCovered(!isOnScreen); })),
          bus_(platform.bus()),
          windows(environment, platform.calendar(), bus_, dataFolder,
                  [this] { statusItem_->popUpMenu(); }),
          support(environment, platform.motion(), bus_, {dataFolder, defaultStateFolder()}),
          termination_(signals_.received.subscribe([] { QApplication::quit(); })) {
        putUpStatusItem();
        for (Signal<>* change : {&bus_.came, &bus_.lost}) {
            busChanges_.push_back(change->subscribe([this] { adoptBus(); }));
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
        if (statusItem_) {
            statusItem_->tellNotSaved();
        }
    }

    // Over no bus it is an icon in the older tray.
    void putUpStatusItem() {
        statusItem_.reset();
        statusItem_ = std::make_unique<StatusItem>(
            StatusMenu::Services{environment.timerEngine(), environment.sessionStateStore(),
                                 environment.settingsStore(), environment.overlayManager(),
                                 environment.dailyCounter(),
                                 [this] { return environment.workHoursGate().workUntil(); },
                                 [this] { windows.showSettings(); },
                                 [this] { windows.showReport(); }, [this] { support.showAbout(); },
                                 [] { QApplication::quit(); }},
            bus_.busOrNone());
        if (hasFailed_) {
            statusItem_->tellNotSaved();
        }
    }

    // What was said over the bus that is gone is said again over the new one.
    void adoptBus() {
        putUpStatusItem();
        notifications_.adopt(bus_.busOrNone());
    }

    bool hasFailed_ = false;
    std::unique_ptr<StatusItem> statusItem_;
    Subscription failures_;
    BreakTrace trace_;
    Subscription language_;
    Appearance appearance_;
    ToastSurface toastSurface_;
    Subscription coverings_;
    SessionBusKeeper& bus_;

  public:
    WorkWindows windows;
    SupportWindows support;

  private:
    TerminationSignals signals_;
    Subscription termination_;
    std::vector<Subscription> busChanges_;
};

int runDemo(LinuxPlatform& platform, const DesktopOptions& options) {
    MemoryPreferences preferences;
    Demo::writeSettings(preferences);
    RunningApplication application(platform, preferences, {});
    const Demo demo(application.environment, platform.runLoop(), options.screenshotFolder);
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

void speakLanguageOf(const std::string& folder) {
    Texts::setLanguage(StoredDocuments(folder).settings().languageRaw);
}

int bringForward(const SingleInstance& second, const std::string& folder) {
    speakLanguageOf(folder);
    return second.activateFirst() ? print(Texts::of("cli.run.second").toStdString() + '\n')
                                  : complain({"cli.error.no_answer", {}}, ExitStatus::kUnreachable);
}

// From a terminal over ssh the one that runs in the session can still be asked to come forward.
int runWithoutDisplay(int& argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const std::string folder = defaultPreferencesFolder().string();
    if (SingleInstance::isTaken(folder)) {
        return bringForward(SingleInstance(folder), folder);
    }
    speakLanguageOf(folder);
    return complain({"cli.error.no_display", {}}, ExitStatus::kFailed);
}

int runForReal(LinuxPlatform& platform) {
    const std::string folder = defaultPreferencesFolder().string();
    SingleInstance instance(folder);
    if (instance.role() == SingleInstance::Role::second) {
        return bringForward(instance, folder);
    }
    writeCrashReports();
    FilePreferences preferences(folder, platform.runLoop());
    RunningApplication application(platform, preferences, folder);
    AutostartLoginItem loginItem(AutostartLoginItem::Places::ofThisSession());
    LoginItemSync loginItemSync(application.environment.settingsStore(), loginItem);
    const Subscription refusals = loginItemSync.refused.subscribe(
        [](const LocalizedText& text) { static_cast<void>(complain(text, ExitStatus::kFailed)); });
    application.support.begin();
    const Subscription activation =
        instance.activated.subscribe([&application] { application.windows.showSettings(); });
    const ControlService control(
        {application.environment, platform.calendar(), systemWallTime, knownLanguages(),
         [&application](AppWindow window) { application.open(window); }},
        platform.bus());
    return application.run();
}

// A picture of a whole display is given back to the system when a break is over. Left to itself the
// allocator takes the first such block for the usual size and keeps all later ones.
void giveLargeBlocksBack() {
    constexpr int kLargeBlockBytes = 256 * 1024;
    mallopt(M_MMAP_THRESHOLD, kLargeBlockBytes);
}

void releaseSoon() {
    constexpr int kSoonMs = 2000;
    QTimer::singleShot(kSoonMs, qApp, [] {
        QPixmapCache::clear();
        releaseUnusedMemory();
    });
}

// What the start took is of no use later, and what a window took not until the next one. Not at
// once: it is still being taken down.
void releaseUnusedMemoryWhenCalm(const QApplication& application) {
    releaseSoon();
    QObject::connect(&application, &QGuiApplication::lastWindowClosed, &application, releaseSoon);
}

}  // namespace

int runDesktopApplication(int& argc, char** argv, const DesktopOptions& options) {
    giveLargeBlocksBack();
    if (!isDisplayReachable()) {
        return runWithoutDisplay(argc, argv);
    }
    installAccessiblePopups();
    const QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("ostrel"));
    QApplication::setApplicationDisplayName(QStringLiteral("Ostrel"));
    QApplication::setDesktopFileName(QStringLiteral("org.ostrel.Ostrel"));
    QApplication::setQuitOnLastWindowClosed(false);
    releaseUnusedMemoryWhenCalm(application);
    LinuxPlatform platform;
    return options.action == DesktopOptions::Action::demo ? runDemo(platform, options)
                                                          : runForReal(platform);
}

}  // namespace ostrel
