#pragma once

#include <cstdint>

#include "platform/api/input_idle.h"

namespace ostrel {

// The idle time that the X server counts for its screen saver (MIT-SCREEN-SAVER). Absent when Qt
// does not run on X11, the server is a guest in a Wayland session or lacks the extension. Needs a
// QGuiApplication.
class X11InputIdle : public InputIdle {
  public:
    X11InputIdle();

    [[nodiscard]] std::optional<double> secondsSinceLastInput() const override;

  private:
    std::uint32_t root_ = 0;  // 0: it cannot be told
};

}  // namespace ostrel
