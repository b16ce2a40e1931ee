#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "app/environment/platform.h"
#include "base/signal.h"
#include "platform/api/appearance_settings.h"
#include "screens/about/about_window.h"
#include "screens/settings/settings_services.h"
#include "screens/status_menu.h"
#include "screens/status_presence.h"

namespace ostrel {

// The desktop that the application runs on: what the environment asks of it, and what the windows
// do. All of it is there for as long as the application runs, on the main thread.
class DesktopSystem {
  public:
    // What the settings and the welcome ask.
    struct Questions {
        std::function<std::vector<std::string>()> runningPrograms;
        std::function<std::optional<std::string>(const std::string& identifier)> programName;
        std::function<void(QObject* receiver, SettingsServices::TellCapabilities)> findCapabilities;
        std::function<std::optional<std::uint32_t>(const QKeyEvent& press)> virtualKeyCode;
    };

    virtual ~DesktopSystem() = default;

    // What is made over preferences goes before these do.
    [[nodiscard]] virtual std::unique_ptr<SystemNotifications> makeNotifications(
        PreferencesStore& preferences) = 0;
    [[nodiscard]] virtual Platform platform(PreferencesStore& preferences,
                                            SystemNotifications& notifications,
                                            std::function<void(AppWindow)> openWindow) = 0;

    [[nodiscard]] virtual RunLoop& runLoop() = 0;
    [[nodiscard]] virtual const Calendar& calendar() const = 0;
    [[nodiscard]] virtual NowFunction now() const = 0;
    [[nodiscard]] virtual SystemEvents& systemEvents() = 0;
    [[nodiscard]] virtual const MotionSettings& motion() const = 0;
    [[nodiscard]] virtual const AppearanceSettings& appearance() const = 0;

    [[nodiscard]] virtual std::unique_ptr<StatusPresence> makeStatusPresence(
        const StatusMenu::Services& services) = 0;
    // What was made so far is of no more use.
    Signal<> statusPresenceIsVoid;

    [[nodiscard]] virtual Questions questions() = 0;

    // The libraries that the program stands on here, besides the toolkit and those that it has
    // everywhere.
    [[nodiscard]] virtual std::vector<AboutWindow::Part> parts() const { return {}; }

    // The newest report of a run that ended by a fault of its own, and the one that nobody has been
    // told of yet. Absent where the system keeps such reports itself.
    [[nodiscard]] virtual std::optional<std::filesystem::path> newestCrashReport() const {
        return std::nullopt;
    }
    [[nodiscard]] virtual std::optional<std::filesystem::path> takeUnseenCrashReport() {
        return std::nullopt;
    }
};

}  // namespace ostrel
