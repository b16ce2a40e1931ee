#include "screens/texts/languages.h"

#include <array>

namespace ostrel::Texts {

std::span<const Language> languages() {
    static constexpr auto kLanguages = std::to_array<Language>({
        {"en", "English"},
        {"de", "Deutsch"},
        {"es", "Español"},
        {"fr", "Français"},
        {"it", "Italiano"},
        {"nl", "Nederlands"},
        {"pl", "Polski"},
        {"pt", "Português (Brasil)"},
        {"tr", "Türkçe"},
        {"ru", "Русский"},
        {"uk", "Українська"},
        {"ar", "العربية", true},
        {"hi", "हिन्दी"},
        {"ja", "日本語"},
        {"ko", "한국어"},
        {"zh", "简体中文"},
    });
    return kLanguages;
}

}  // namespace ostrel::Texts
