#include "screens/texts/languages.h"

#include <array>

namespace ostrel::Texts {

std::span<const Language> languages() {
    static constexpr auto kLanguages = std::to_array<Language>({
        {"en", "English", false, english},
    });
    return kLanguages;
}

}  // namespace ostrel::Texts
