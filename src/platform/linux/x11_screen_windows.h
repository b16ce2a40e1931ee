#pragma once

#include "platform/api/screen_windows.h"
#include "platform/linux/x11_windows.h"

namespace ostrel {

// The windows that the X11 window manager looks after. Sizes are those of the contents, without
// title bar, border and shadow, divided by the scale factor of the screen that shows most of the
// window.
//
// Absent without a window manager that tells. Needs a QGuiApplication.
class X11ScreenWindows : public ScreenWindows {
  public:
    [[nodiscard]] std::optional<std::vector<Window>> onScreen() const override;

  private:
    X11Windows windows_;
};

}  // namespace ostrel
