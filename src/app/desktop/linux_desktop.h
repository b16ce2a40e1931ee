#pragma once

#include <functional>
#include <memory>

#include "app/desktop/session_bus_keeper.h"
#include "app/shell/desktop_system.h"
#include "base/subscription.h"
#include "platform/calendar/day_watch.h"
#include "platform/calendar/zoned_calendar.h"
#include "platform/linux/crash_reports.h"
#include "platform/linux/linux_do_not_disturb.h"
#include "platform/linux/linux_power_assertions.h"
#include "platform/linux/linux_run_loop.h"
#include "platform/linux/no_haptics.h"
#include "platform/linux/portal_appearance_settings.h"
#include "platform/linux/portal_motion_settings.h"
#include "platform/linux/portal_settings.h"
#include "platform/linux/process_sound_library.h"
#include "platform/linux/qt_displays.h"
#include "platform/linux/session_watch.h"
#include "platform/linux/sleep_watch.h"
#include "platform/linux/x11_frontmost_application.h"
#include "platform/linux/x11_hotkeys.h"
#include "platform/linux/x11_input_idle.h"
#include "platform/linux/x11_screen_windows.h"
#include "platform/linux/zone_watch.h"
#include "screens/linux/x11_window_system.h"
#include "screens/qt_overlay_window_maker.h"

namespace ostrel {

// The desktop session at hand. What listens on the session bus listens again after the bus was
// restarted. Needs a QGuiApplication.
class LinuxDesktop : public DesktopSystem {
  public:
    LinuxDesktop();
    LinuxDesktop(const LinuxDesktop&) = delete;
    LinuxDesktop& operator=(const LinuxDesktop&) = delete;
    ~LinuxDesktop() override;

    [[nodiscard]] std::unique_ptr<SystemNotifications> makeNotifications(
        PreferencesStore& preferences) override;
    [[nodiscard]] Platform platform(PreferencesStore& preferences,
                                    SystemNotifications& notifications,
                                    std::function<void(AppWindow)> openWindow) override;
    [[nodiscard]] RunLoop& runLoop() override { return runLoop_; }
    [[nodiscard]] const Calendar& calendar() const override { return calendar_; }
    [[nodiscard]] NowFunction now() const override;
    [[nodiscard]] SystemEvents& systemEvents() override { return systemEvents_; }
    [[nodiscard]] const MotionSettings& motion() const override { return motion_; }
    [[nodiscard]] const AppearanceSettings& appearance() const override { return appearance_; }
    // Over no bus it is an icon in the older tray.
    [[nodiscard]] std::unique_ptr<StatusPresence> makeStatusPresence(
        const StatusMenu::Services& services) override;
    [[nodiscard]] Questions questions() override;
    [[nodiscard]] std::vector<AboutWindow::Part> parts() const override;
    [[nodiscard]] std::optional<std::filesystem::path> newestCrashReport() const override;
    [[nodiscard]] std::optional<std::filesystem::path> takeUnseenCrashReport() override;

    [[nodiscard]] SessionBusKeeper& bus() { return bus_; }

  private:
    void adoptBus();

    X11WindowSystem windowSystem_;
    SessionBusKeeper bus_;
    LinuxRunLoop runLoop_;
    ZonedCalendar calendar_;
    QtDisplays displays_;
    SystemEvents systemEvents_;
    PortalSettings portal_;
    PortalMotionSettings motion_{portal_};
    PortalAppearanceSettings appearance_{portal_};
    NoHaptics haptics_;
    ProcessSoundLibrary sounds_;
    X11InputIdle inputIdle_;
    X11FrontmostApplication frontmost_;
    X11ScreenWindows windows_;
    LinuxPowerAssertions assertions_{LinuxPowerAssertions::buses(), runLoop_, windows_};
    LinuxDoNotDisturb doNotDisturb_;
    X11Hotkeys hotkeys_;
    QtOverlayWindowMaker overlayWindows_;
    SleepWatch sleepWatch_;
    ZoneWatch zoneWatch_;
    DayWatch dayWatch_;
    SessionWatch sessionWatch_;
    CrashReports crashReports_;
    std::vector<Subscription> changes_;
};

}  // namespace ostrel
