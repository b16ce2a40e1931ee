#pragma once

#include <string>
#include <vector>

#include "app/control/setting_values.h"

namespace ostrel {

// What a shell may offer in place of the last of `words`, which is the beginning of a word: a line
// each, the word and, after a tab, what it is for. ":file" asks for the names of files.
[[nodiscard]] std::string completions(const std::vector<std::string>& words,
                                      const SettingValues::Languages& languages);

}  // namespace ostrel
