#pragma once

#include <memory>

#include "app/mac/mac_window_system.h"
#include "app/shell/desktop_system.h"
#include "base/subscription.h"
#include "platform/calendar/zoned_calendar.h"
#include "platform/macos/application_appearance.h"
#include "platform/macos/bundle_sounds.h"
#include "platform/macos/carbon_hotkeys.h"
#include "platform/macos/event_source_idle.h"
#include "platform/macos/mac_announcements.h"
#include "platform/macos/mac_run_loop.h"
#include "platform/macos/power_manager_assertions.h"
#include "platform/macos/screen_displays.h"
#include "platform/macos/system_event_feed.h"
#include "platform/macos/trackpad_haptics.h"
#include "platform/macos/window_list.h"
#include "platform/macos/workspace_events.h"
#include "platform/macos/workspace_frontmost.h"
#include "platform/macos/workspace_motion_settings.h"
#include "screens/qt_overlay_window_maker.h"

namespace ostrel {

// The desktop of a Mac. Needs a QApplication.
class MacDesktop : public DesktopSystem {
  public:
    MacDesktop();
    MacDesktop(const MacDesktop&) = delete;
    MacDesktop& operator=(const MacDesktop&) = delete;
    ~MacDesktop() override;

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
    [[nodiscard]] std::unique_ptr<StatusPresence> makeStatusPresence(
        const StatusMenu::Services& services) override;
    [[nodiscard]] Questions questions() override;

  private:
    MacWindowSystem windowSystem_;
    MacRunLoop runLoop_;
    ZonedCalendar calendar_;
    SystemEvents systemEvents_;
    SystemEventFeed feed_;
    WorkspaceEvents workspace_;
    ScreenDisplays displays_;
    WorkspaceMotionSettings motion_;
    ApplicationAppearance appearance_;
    TrackpadHaptics haptics_;
    BundleSounds sounds_;
    EventSourceIdle inputIdle_;
    WorkspaceFrontmost frontmost_;
    WindowList windows_;
    PowerManagerAssertions assertions_;
    MacAnnouncements announcements_;
    CarbonHotkeys hotkeys_;
    QtOverlayWindowMaker overlayWindows_;
    // Of the notifications that were made last; null before.
    const SystemNotifications* notifications_ = nullptr;
};

}  // namespace ostrel
