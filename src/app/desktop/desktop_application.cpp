#include "app/desktop/desktop_application.h"

#include <malloc.h>

#include <QApplication>
#include <QPixmapCache>
#include <QTimer>
#include <cstdio>
#include <cstring>
#include <filesystem>

#include "app/desktop/command_output.h"
#include "app/desktop/control_service.h"
#include "app/desktop/known_languages.h"
#include "app/desktop/linux_desktop.h"
#include "app/desktop/stored_documents.h"
#include "app/shell/demo.h"
#include "app/shell/login_item_sync.h"
#include "app/shell/running_application.h"
#include "platform/linux/autostart_login_item.h"
#include "platform/linux/crash_handler.h"
#include "platform/linux/crash_reports.h"
#include "platform/linux/display_probe.h"
#include "platform/linux/file_preferences.h"
#include "platform/linux/memory_release.h"
#include "platform/linux/single_instance.h"
#include "platform/linux/termination_signals.h"
#include "platform/virtual/memory_preferences.h"
#include "screens/accessible_popups.h"
#include "screens/texts/texts.h"

namespace ostrel {
namespace {

int runDemo(LinuxDesktop& desktop, const DesktopOptions& options) {
    MemoryPreferences preferences;
    Demo::writeSettings(preferences);
    RunningApplication application(desktop, preferences, {});
    const TerminationSignals signals;
    const Subscription termination = signals.received.subscribe([] { QApplication::quit(); });
    const Demo demo(application.environment(), desktop.runLoop(), options.screenshotFolder);
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

int runForReal(LinuxDesktop& desktop) {
    const std::string folder = defaultPreferencesFolder().string();
    SingleInstance instance(folder);
    if (instance.role() == SingleInstance::Role::second) {
        return bringForward(instance, folder);
    }
    writeCrashReports();
    FilePreferences preferences(folder, desktop.runLoop());
    RunningApplication application(desktop, preferences, folder);
    AutostartLoginItem loginItem(AutostartLoginItem::Places::ofThisSession());
    LoginItemSync loginItemSync(application.environment().settingsStore(), loginItem);
    const Subscription refusals = loginItemSync.refused.subscribe(
        [](const LocalizedText& text) { static_cast<void>(complain(text, ExitStatus::kFailed)); });
    const TerminationSignals signals;
    const Subscription termination = signals.received.subscribe([] { QApplication::quit(); });
    application.support().begin();
    const Subscription activation =
        instance.activated.subscribe([&application] { application.windows().showSettings(); });
    const ControlService control(
        {application.environment(), desktop.calendar(), desktop.now(), knownLanguages(),
         [&application](AppWindow window) { application.open(window); }},
        desktop.bus());
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
    LinuxDesktop desktop;
    return options.action == DesktopOptions::Action::demo ? runDemo(desktop, options)
                                                          : runForReal(desktop);
}

}  // namespace ostrel
