#include "app/desktop/known_languages.h"

#include "screens/texts/languages.h"

namespace ostrel {

SettingValues::Languages knownLanguages() {
    SettingValues::Languages codes;
    for (const Texts::Language& language : Texts::languages()) {
        codes.emplace_back(language.code);
    }
    return codes;
}

}  // namespace ostrel
