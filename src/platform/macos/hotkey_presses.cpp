#include "platform/macos/hotkey_presses.h"

#include <utility>

namespace ostrel {
namespace {

constexpr std::uint32_t kGreatestKeyCode = 127;
constexpr std::uint32_t kModifiers = 256 + 512 + 2048 + 4096;

}  // namespace

std::uint32_t HotkeyPresses::add(std::function<void()> onPress) {
    presses_[++lastNumber_] = std::move(onPress);
    return lastNumber_;
}

bool HotkeyPresses::press(std::uint32_t signature, std::uint32_t number) const {
    const auto found = presses_.find(number);
    if (signature != kSignature || found == presses_.end()) {
        return false;
    }
    const std::function<void()> onPress = found->second;
    onPress();
    return true;
}

bool HotkeyPresses::isChord(std::uint32_t keyCode, std::uint32_t modifiers) {
    return keyCode <= kGreatestKeyCode && modifiers != 0 && (modifiers & ~kModifiers) == 0;
}

}  // namespace ostrel
