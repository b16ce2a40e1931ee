#pragma once

#include <vector>

#include "base/localized_text.h"
#include "menubar/menu_bar_formatter.h"

namespace ostrel {

// The status item's tooltip, a text a line: both countdowns, or that the schedule is off.
[[nodiscard]] std::vector<LocalizedText> menuBarTooltip(const MenuBarFormatter::Context& context);

}  // namespace ostrel
