#include "screens/chord_words.h"

#include "screens/gui.h"
#include "screens/texts/texts.h"

namespace ostrel {

TEST(ChordWords, AreThoseOfTheKeyboardsOfTheLanguage) {
    constexpr std::uint32_t kControlShift = HotkeyChord::kControl + HotkeyChord::kShift;
    constexpr std::uint32_t kOptionCommand = HotkeyChord::kOption + HotkeyChord::kCommand;
    const struct {
        const char* language = "";
        HotkeyChord chord;
        const char* words = "";
    } cases[] = {
        {"en", {35, kControlShift, "⌃⇧P"}, "Ctrl+Shift+P"},
        {"en", {35, kControlShift, "P"}, "Ctrl+Shift+P"},
        {"en", {49, kOptionCommand, "⌥⌘Space"}, "Alt+Super+Space"},
        {"en", {43, kOptionCommand, "⌘⌥,"}, "Alt+Super+,"},
        {"en", {1, kOptionCommand, ""}, "Alt+Super+"},
        {"de", {49, kControlShift, "⌃⇧Space"}, "Strg+Umschalt+Leertaste"},
        {"fr", {35, kControlShift, "⌃⇧P"}, "Ctrl+Maj+P"},
    };
    for (const auto& [language, chord, words] : cases) {
        Texts::setLanguage(language);
        EXPECT_EQ(ChordWords::of(chord), QString::fromUtf8(words)) << language;
    }
    Texts::setLanguage("en");
}

}  // namespace ostrel
