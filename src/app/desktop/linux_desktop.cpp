#include "app/desktop/linux_desktop.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLocale>
#include <QWindow>
#include <utility>

#include "platform/linux/application_name.h"
#include "platform/linux/linux_capabilities.h"
#include "platform/linux/linux_clock.h"
#include "platform/linux/linux_notifications.h"
#include "platform/linux/running_applications.h"
#include "platform/linux/user_attention.h"
#include "platform/linux/virtual_keys.h"
#include "screens/chord_words.h"
#include "screens/linux/status_item.h"
#include "screens/texts/texts.h"

namespace ostrel {
namespace {

// It takes the keyboard; that is no user who turns to the program.
bool hasOverlayTheFocus() {
    const QWindow* window = QGuiApplication::focusWindow();
    return window != nullptr && window->flags().testFlag(Qt::X11BypassWindowManagerHint);
}

// What was said over the bus that is gone is said again over the new one.
class KeptNotifications : public LinuxNotifications {
  public:
    KeptNotifications(Needs needs, SessionBusKeeper& bus)
        : LinuxNotifications(std::move(needs), bus.busOrNone()) {
        for (Signal<>* change : {&bus.came, &bus.lost}) {
            changes_.push_back(change->subscribe([this, &bus] { adopt(bus.busOrNone()); }));
        }
    }

  private:
    std::vector<Subscription> changes_;
};

}  // namespace

LinuxDesktop::LinuxDesktop()
    : bus_(QDBusConnection::sessionBus(), SessionBusKeeper::address()),
      runLoop_(systemWallTime),
      calendar_(systemTimeZone),
      sounds_(QCoreApplication::applicationDirPath().toStdString()),
      sleepWatch_(systemEvents_, runLoop_),
      zoneWatch_(systemEvents_),
      dayWatch_(systemEvents_, calendar_, runLoop_, systemWallTime),
      sessionWatch_(systemEvents_),
      crashReports_(defaultStateFolder()) {
    WindowSystem::use(&windowSystem_);
    changes_.push_back(
        runLoop_.clockWasSet.subscribe([this] { systemEvents_.clockChanged.send(); }));
    changes_.push_back(bus_.came.subscribe([this] {
        adoptBus();
        statusPresenceIsVoid.send();
    }));
    changes_.push_back(bus_.lost.subscribe([this] { statusPresenceIsVoid.send(); }));
    QObject::connect(qGuiApp, &QGuiApplication::applicationStateChanged, &sleepWatch_,
                     [this](Qt::ApplicationState state) {
                         if (state == Qt::ApplicationActive && !hasOverlayTheFocus()) {
                             systemEvents_.didBecomeActive.send();
                         }
                     });
}

LinuxDesktop::~LinuxDesktop() {
    WindowSystem::use(nullptr);
}

void LinuxDesktop::adoptBus() {
    const QDBusConnection& bus = *bus_.bus();
    portal_.adopt(bus);
    assertions_.adopt(bus, SessionBusKeeper::address());
    doNotDisturb_.adopt(bus);
    sessionWatch_.adopt(bus);
}

NowFunction LinuxDesktop::now() const {
    return systemWallTime;
}

std::unique_ptr<StatusPresence> LinuxDesktop::makeStatusPresence(
    const StatusMenu::Services& services) {
    return std::make_unique<StatusItem>(services, bus_.busOrNone());
}

DesktopSystem::Questions LinuxDesktop::questions() {
    return {runningApplications,
            [](const std::string& identifier) {
                return applicationName(identifier, QLocale().name().toStdString());
            },
            [this](QObject* receiver, SettingsServices::TellCapabilities tell) {
                findCapabilities(bus_.busOrNone(), QDBusConnection::systemBus(), receiver,
                                 std::move(tell));
            },
            [](const QKeyEvent& press) { return virtualKeyCodeOf(press.nativeScanCode()); }};
}

std::vector<AboutWindow::Part> LinuxDesktop::parts() const {
    return {{QStringLiteral("libxcb"), "about.parts.xcb"},
            {QStringLiteral("libsndfile, PulseAudio"), "about.parts.sound"}};
}

std::optional<std::filesystem::path> LinuxDesktop::newestCrashReport() const {
    return crashReports_.newest();
}

std::optional<std::filesystem::path> LinuxDesktop::takeUnseenCrashReport() {
    return crashReports_.takeUnseen();
}

std::unique_ptr<SystemNotifications> LinuxDesktop::makeNotifications(
    PreferencesStore& preferences) {
    return std::make_unique<KeptNotifications>(
        LinuxNotifications::Needs{runLoop_, calendar_, systemWallTime, systemEvents_, preferences,
                                  [](const LocalizedText& text) { return Texts::of(text); }},
        bus_);
}

Platform LinuxDesktop::platform(PreferencesStore& preferences, SystemNotifications& notifications,
                                std::function<void(AppWindow)> openWindow) {
    return {runLoop_,
            systemWallTime,
            calendar_,
            preferences,
            displays_,
            systemEvents_,
            motion_,
            haptics_,
            sounds_,
            inputIdle_,
            notifications,
            overlayWindows_,
            randomUuids(),
            {&frontmost_, &windows_, &assertions_, &doNotDisturb_,
             X11Hotkeys::isPossible() ? &hotkeys_ : nullptr},
            std::move(openWindow),
            requestUserAttention,
            [](const HotkeyChord& chord) { return ChordWords::of(chord).toStdString(); }};
}

}  // namespace ostrel
