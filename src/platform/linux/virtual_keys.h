#pragma once

#include <cstdint>
#include <optional>

namespace ostrel {

// The key of an X11 keyboard (evdev numbering) at the place of a virtual key code, whatever the
// layout has it type. Absent for a code that no key has.
[[nodiscard]] std::optional<std::uint8_t> x11KeycodeOf(std::uint32_t virtualKeyCode);

// The other way round, for a key that was pressed. Absent for a key that has no such code.
[[nodiscard]] std::optional<std::uint32_t> virtualKeyCodeOf(std::uint32_t x11Keycode);

}  // namespace ostrel
