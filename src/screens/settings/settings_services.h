#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/api/capability.h"
#include "screens/settings/day_plan.h"

class QKeyEvent;

namespace ostrel {

class HotkeyRouter;
class OverlayManager;
class SettingsStore;
class TimerEngine;
struct SettingsModel;

// What the settings window works with. All of it outlives the window.
struct SettingsServices {
    using TellCapabilities = std::function<void(const std::vector<Capability>&)>;
    enum class Chime { start, end };

    SettingsStore& settingsStore;
    TimerEngine& timerEngine;
    const OverlayManager& overlayManager;
    HotkeyRouter* hotkeyRouter = nullptr;  // null where there are no global hotkeys
    std::function<DayPlan(const SettingsModel&)> planDay;
    std::function<void(Chime)> playChime;
    // The identifiers of the programs that have a window.
    std::function<std::vector<std::string>()> runningPrograms;
    // What people call the program of an identifier, where that is known.
    std::function<std::optional<std::string>(const std::string&)> programName;
    // Answers later, unless the object is gone by then.
    std::function<void(class QObject* receiver, TellCapabilities)> findCapabilities;
    // The virtual key code of the key that was pressed, by its place; absent where none has one.
    std::function<std::optional<std::uint32_t>(const QKeyEvent& press)> virtualKeyCode;
    std::function<void()> popUpMenu;  // the status item's, where the pointer is
    std::string dataFolder;
};

}  // namespace ostrel
