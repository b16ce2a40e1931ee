#pragma once

#include "menubar/menu_bar_formatter.h"

namespace ostrel {

class SessionStateStore;
class SettingsStore;
class TimerEngine;

// The formatter's input as of now.
[[nodiscard]] MenuBarFormatter::Context menuBarContext(const TimerEngine& engine,
                                                       const SessionStateStore& session,
                                                       const SettingsStore& settings);

}  // namespace ostrel
