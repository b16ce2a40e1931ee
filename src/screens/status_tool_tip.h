#pragma once

#include <QString>

#include "screens/status_menu.h"

namespace ostrel {

// What the status item says when the pointer rests on it. Times above a minute are rounded to whole
// minutes, so that it changes once a minute, not once a second.
[[nodiscard]] QString statusToolTip(const StatusMenu::Services& services);

}  // namespace ostrel
