#pragma once

#include <array>
#include <functional>
#include <string>
#include <string_view>

#include "base/clock.h"
#include "base/uuid.h"
#include "core/settings/hotkey_chord.h"
#include "overlay/overlay_window.h"
#include "platform/api/calendar.h"
#include "platform/api/displays.h"
#include "platform/api/distributed_announcements.h"
#include "platform/api/frontmost_application.h"
#include "platform/api/global_hotkeys.h"
#include "platform/api/haptics.h"
#include "platform/api/input_idle.h"
#include "platform/api/motion_settings.h"
#include "platform/api/power_assertions.h"
#include "platform/api/preferences_store.h"
#include "platform/api/run_loop.h"
#include "platform/api/screen_windows.h"
#include "platform/api/sound_player.h"
#include "platform/api/system_events.h"
#include "platform/api/system_notifications.h"

namespace ostrel {

// A window of the program that an answer to a notification opens.
enum class AppWindow { report, app };
constexpr std::array<std::string_view, 2> enumNames(AppWindow) {
    return {"report", "app"};
}

// What tells of the user and of what the user works with; each absent where that cannot be told.
struct PresenceSources {
    const FrontmostApplication* frontmost = nullptr;
    const ScreenWindows* windows = nullptr;
    const PowerAssertions* assertions = nullptr;
    const DistributedAnnouncements* announcements = nullptr;
    GlobalHotkeys* hotkeys = nullptr;
};

// Everything that differs between the desktop application, the simulator and the tests. What it
// refers to outlives the environment that is made of it.
struct Platform {
    RunLoop& runLoop;
    NowFunction now;
    const Calendar& calendar;
    PreferencesStore& preferences;
    Displays& displays;
    SystemEvents& systemEvents;
    const MotionSettings& motion;
    Haptics& haptics;
    SoundLibrary& sounds;
    const InputIdle& inputIdle;
    SystemNotifications& notifications;
    OverlayWindowMaker& overlayWindows;
    MakeUuid makeUuid;
    PresenceSources presence = {};
    std::function<void(AppWindow)> openWindow = {};
    std::function<void()> requestUserAttention = {};  // empty where there is no way to do so
    // The keys of a shortcut in the words of the user's language; empty where nobody reads them.
    std::function<std::string(const HotkeyChord&)> chordWords = {};
};

}  // namespace ostrel
