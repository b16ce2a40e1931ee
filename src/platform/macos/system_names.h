#pragma once

#include <array>
#include <string_view>

namespace ostrel {

// What a Mac calls things in announcements that no header of its SDK names. None of it is promised
// by the system: where a name goes out of use, what it tells is simply not heard.

// The screen is locked and unlocked. Heard by Chromium, Electron and KeePassXC alike.
inline constexpr std::string_view kScreenIsLocked = "com.apple.screenIsLocked";
inline constexpr std::string_view kScreenIsUnlocked = "com.apple.screenIsUnlocked";

// The screen saver covers the screens and leaves them. Heard by Chromium and KeePassXC.
inline constexpr std::string_view kScreenSaverStarted = "com.apple.screensaver.didstart";
inline constexpr std::string_view kScreenSaverStopped = "com.apple.screensaver.didstop";

// Do Not Disturb was switched. presence/ reads what comes with them.
inline constexpr std::array<std::string_view, 2> kDoNotDisturbNames = {
    "com.apple.controlcenter.DoNotDisturbActive", "com.apple.donotdisturb.notification"};

}  // namespace ostrel
