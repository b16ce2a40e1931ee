#pragma once

#include <cstdint>
#include <optional>

class QKeyEvent;

namespace ostrel::OverlayKeys {

inline constexpr std::uint32_t kEscape = 53;
inline constexpr std::uint32_t kReturn = 36;
inline constexpr std::uint32_t kEnter = 76;  // of the keypad
inline constexpr std::uint32_t kSpace = 49;
inline constexpr std::uint32_t kP = 35;

// The virtual key code of a key that means something to the overlay; absent for every other key,
// and with a modifier but Shift.
//
// P is the key that types p; under a layout without Latin letters it is the key at that place.
[[nodiscard]] std::optional<std::uint32_t> virtualKeyCode(const QKeyEvent& event);

}  // namespace ostrel::OverlayKeys
