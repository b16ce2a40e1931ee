#pragma once

#include <array>
#include <functional>
#include <string_view>

#include "base/clock.h"
#include "base/uuid.h"
#include "overlay/overlay_window.h"
#include "platform/api/calendar.h"
#include "platform/api/displays.h"
#include "platform/api/frontmost_application.h"
#include "platform/api/haptics.h"
#include "platform/api/input_idle.h"
#include "platform/api/motion_settings.h"
#include "platform/api/preferences_store.h"
#include "platform/api/run_loop.h"
#include "platform/api/sound_player.h"
#include "platform/api/system_events.h"
#include "platform/api/system_notifications.h"

namespace ostrel {

// A window of the program that an answer to a notification opens.
enum class AppWindow { report, app };
constexpr std::array<std::string_view, 2> enumNames(AppWindow) {
    return {"report", "app"};
}

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
    const FrontmostApplication* frontmost = nullptr;  // absent where that cannot be told
    std::function<void(AppWindow)> openWindow = {};
    std::function<void()> requestUserAttention = {};  // empty where there is no way to do so
};

}  // namespace ostrel
