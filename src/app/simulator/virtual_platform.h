#pragma once

#include <string>

#include "app/environment/platform.h"
#include "app/simulator/recording_windows.h"
#include "platform/calendar/day_watch.h"
#include "platform/calendar/zoned_calendar.h"
#include "platform/virtual/memory_preferences.h"
#include "platform/virtual/virtual_devices.h"
#include "platform/virtual/virtual_notifications.h"
#include "platform/virtual/virtual_run_loop.h"
#include "platform/virtual/virtual_sounds.h"

namespace ostrel {

// A whole operating system under the control of a script or a test.
class VirtualPlatform {
  public:
    VirtualPlatform(std::string zone, WallTime start)
        : timeZone(std::move(zone)), calendar([this] { return timeZone; }), runLoop(start) {}
    VirtualPlatform(const VirtualPlatform&) = delete;
    VirtualPlatform& operator=(const VirtualPlatform&) = delete;

    [[nodiscard]] Platform platform(MakeUuid makeUuid) {
        return {runLoop,
                [this] { return runLoop.wallNow(); },
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
                std::move(makeUuid),
                {&frontmost, &windows, &assertions, &announcements, &hotkeys},
                [this](AppWindow window) { windowOpened.send(window); },
                [this] { attentionRequested.send(); }};
    }

    std::string timeZone;
    ZonedCalendar calendar;
    VirtualRunLoop runLoop;
    MemoryPreferences preferences;
    VirtualDisplays displays;
    SystemEvents systemEvents;
    VirtualMotionSettings motion;
    VirtualHaptics haptics;
    VirtualSounds sounds{runLoop};
    VirtualInputIdle inputIdle;
    VirtualNotifications notifications{runLoop, calendar, systemEvents,
                                       [this] { return runLoop.wallNow(); }};
    RecordingWindows overlayWindows;
    VirtualFrontmostApplication frontmost;
    VirtualScreenWindows windows;
    VirtualPowerAssertions assertions;
    DistributedAnnouncements announcements;
    VirtualHotkeys hotkeys;
    DayWatch dayWatch{systemEvents, calendar, runLoop, [this] { return runLoop.wallNow(); }};
    Signal<> attentionRequested;
    Signal<AppWindow> windowOpened;
};

}  // namespace ostrel
