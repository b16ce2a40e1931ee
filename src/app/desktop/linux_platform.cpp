#include "app/desktop/linux_platform.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QWindow>
#include <utility>

#include "platform/linux/linux_clock.h"
#include "platform/linux/user_attention.h"
#include "screens/chord_words.h"

namespace ostrel {
namespace {

// It takes the keyboard; that is no user who turns to the program.
bool hasOverlayTheFocus() {
    const QWindow* window = QGuiApplication::focusWindow();
    return window != nullptr && window->flags().testFlag(Qt::X11BypassWindowManagerHint);
}

}  // namespace

LinuxPlatform::LinuxPlatform()
    : bus_(QDBusConnection::sessionBus(), SessionBusKeeper::address()),
      runLoop_(systemWallTime),
      calendar_(systemTimeZone),
      sounds_(QCoreApplication::applicationDirPath().toStdString()),
      sleepWatch_(systemEvents_, runLoop_),
      zoneWatch_(systemEvents_),
      dayWatch_(systemEvents_, calendar_, runLoop_, systemWallTime),
      sessionWatch_(systemEvents_),
      clockChanges_(runLoop_.clockWasSet.subscribe([this] { systemEvents_.clockChanged.send(); })),
      busChanges_(bus_.came.subscribe([this] { adoptBus(); })) {
    QObject::connect(qGuiApp, &QGuiApplication::applicationStateChanged, &sleepWatch_,
                     [this](Qt::ApplicationState state) {
                         if (state == Qt::ApplicationActive && !hasOverlayTheFocus()) {
                             systemEvents_.didBecomeActive.send();
                         }
                     });
}

void LinuxPlatform::adoptBus() {
    const QDBusConnection& bus = *bus_.bus();
    portal_.adopt(bus);
    assertions_.adopt(bus, SessionBusKeeper::address());
    doNotDisturb_.adopt(bus);
    sessionWatch_.adopt(bus);
}

Platform LinuxPlatform::over(PreferencesStore& preferences, SystemNotifications& notifications,
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
