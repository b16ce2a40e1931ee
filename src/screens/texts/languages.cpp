#include "screens/texts/languages.h"

#include <array>

namespace ostrel::Texts {

std::span<const Language> languages() {
    static constexpr auto kLanguages = std::to_array<Language>({
        {"en", "English", false, english},
        {"de", "Deutsch", false, german},
        {"es", "Español", false, spanish},
        {"fr", "Français", false, french},
        {"it", "Italiano", false, italian},
        {"nl", "Nederlands", false, dutch},
        {"pl", "Polski", false, polish},
        {"pt", "Português (Brasil)", false, portuguese},
        {"tr", "Türkçe", false, turkish},
        {"ru", "Русский", false, russian},
        {"uk", "Українська", false, ukrainian},
        {"ar", "العربية", true, arabic},
        {"hi", "हिन्दी", false, hindi},
        {"ja", "日本語", false, japanese},
        {"ko", "한국어", false, korean},
        {"zh", "简体中文", false, chinese},
    });
    return kLanguages;
}

}  // namespace ostrel::Texts
