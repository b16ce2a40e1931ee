#pragma once

#include <QString>
#include <cstdint>
#include <string>

#include "core/settings/hotkey_chord.h"

// How the keys of a shortcut are written.
namespace ostrel::ChordWords {

// For people, with the words that the keyboards of the language have: "Ctrl+Shift+B", in German
// "Strg+Umschalt+B"; on a Mac with the glyphs of its keys: "⌃⇧B".
[[nodiscard]] QString of(const HotkeyChord& chord);

// The glyphs of HotkeyChord::displayString for its masks: "⌃⇧".
[[nodiscard]] std::string glyphs(std::uint32_t modifiers);

}  // namespace ostrel::ChordWords
