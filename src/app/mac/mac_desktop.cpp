#include "app/mac/mac_desktop.h"

#include <QKeyEvent>
#include <utility>

#include "app/mac/mac_status_item.h"
#include "base/uuid.h"
#include "platform/macos/mac_bundle.h"
#include "platform/macos/mac_capabilities.h"
#include "platform/macos/mac_clock.h"
#include "platform/macos/main_timer.h"
#include "platform/macos/time_zone.h"
#include "platform/macos/user_notifications.h"
#include "platform/macos/workspace_programs.h"
#include "screens/chord_words.h"
#include "screens/texts/texts.h"

namespace ostrel {

MacDesktop::MacDesktop()
    : runLoop_({macAwakeTime, macWallTime}, std::make_unique<MainTimer>()),
      calendar_(macTimeZone),
      feed_(systemEvents_, runLoop_, {macAsleepSec, forgetMacTimeZone}),
      workspace_(feed_) {
    WindowSystem::use(&windowSystem_);
}

MacDesktop::~MacDesktop() {
    WindowSystem::use(nullptr);
}

std::unique_ptr<SystemNotifications> MacDesktop::makeNotifications(
    PreferencesStore& /*preferences*/) {
    auto notifications = std::make_unique<UserNotifications>(
        [](const LocalizedText& text) { return Texts::of(text).toStdString(); }, macWallTime);
    notifications_ = notifications.get();
    return notifications;
}

Platform MacDesktop::platform(PreferencesStore& preferences, SystemNotifications& notifications,
                              std::function<void(AppWindow)> openWindow) {
    return {runLoop_,
            macWallTime,
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
            {&frontmost_, &windows_, &assertions_, &announcements_, &hotkeys_},
            std::move(openWindow),
            {},
            [](const HotkeyChord& chord) { return ChordWords::of(chord).toStdString(); }};
}

NowFunction MacDesktop::now() const {
    return macWallTime;
}

std::unique_ptr<StatusPresence> MacDesktop::makeStatusPresence(
    const StatusMenu::Services& services) {
    return std::make_unique<MacStatusItem>(services);
}

DesktopSystem::Questions MacDesktop::questions() {
    return {runningPrograms, runningProgramName,
            [this](QObject* /*receiver*/, const SettingsServices::TellCapabilities& tell) {
                tell(capabilitiesOnMac(
                    {isInBundle(), notifications_ ? notifications_->authorization()
                                                  : SystemNotifications::Authorization::unknown}));
            },
            [](const QKeyEvent& press) {
                return std::optional<std::uint32_t>(press.nativeVirtualKey());
            }};
}

}  // namespace ostrel
