#pragma once

#include <cstdint>
#include <string>
#include <tuple>

#include "core/settings/json_record.h"

namespace ostrel {

// A global keyboard shortcut.
struct HotkeyChord {
    static constexpr std::uint32_t kCommand = 256;
    static constexpr std::uint32_t kShift = 512;
    static constexpr std::uint32_t kOption = 2048;
    static constexpr std::uint32_t kControl = 4096;

    std::uint32_t keyCode = 0;    // virtual key code of the one layout table
    std::uint32_t modifiers = 0;  // the masks above, added together
    std::string displayString;    // modifier glyphs, then the key

    bool operator==(const HotkeyChord&) const = default;

    static constexpr auto fields() {
        return std::tuple{Field{"keyCode", &HotkeyChord::keyCode},
                          Field{"modifiers", &HotkeyChord::modifiers},
                          Field{"displayString", &HotkeyChord::displayString}};
    }
};

}  // namespace ostrel
