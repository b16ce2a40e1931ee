#pragma once

#include "platform/api/screen_windows.h"

namespace ostrel {

// The windows that the window server shows, of every program and on every layer: a player's window
// in full screen is not always among the ordinary ones.
//
// Names of windows are not asked for, so that no permission to record the screen is needed. Slow:
// once in some seconds. Absent where there is no graphical session.
class WindowList : public ScreenWindows {
  public:
    [[nodiscard]] std::optional<std::vector<Window>> onScreen() const override;
};

}  // namespace ostrel
