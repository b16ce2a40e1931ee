#pragma once

#include <functional>

#include "base/clock.h"
#include "base/uuid.h"
#include "overlay/overlay_window.h"
#include "platform/api/calendar.h"
#include "platform/api/displays.h"
#include "platform/api/frontmost_application.h"
#include "platform/api/haptics.h"
#include "platform/api/motion_settings.h"
#include "platform/api/preferences_store.h"
#include "platform/api/run_loop.h"
#include "platform/api/system_events.h"

namespace ostrel {

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
    OverlayWindowMaker& overlayWindows;
    MakeUuid makeUuid;
    const FrontmostApplication* frontmost = nullptr;  // absent where that cannot be told
    std::function<void()> requestUserAttention = {};  // empty where there is no way to do so
};

}  // namespace ostrel
