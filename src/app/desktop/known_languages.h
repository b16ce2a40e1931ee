#pragma once

#include "app/control/setting_values.h"

namespace ostrel {

// The codes of the languages that the texts are there in.
[[nodiscard]] SettingValues::Languages knownLanguages();

}  // namespace ostrel
