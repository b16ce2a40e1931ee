#pragma once

#include <chrono>
#include <cstdint>
#include <optional>

#include "platform/api/input_idle.h"

namespace ostrel {

// The idle time that the X server counts for its screen saver (MIT-SCREEN-SAVER), less what is no
// input: a player that keeps the screen on resets that time too. Absent when Qt does not run on
// X11, the server is a guest in a Wayland session or lacks the extension. Needs a QGuiApplication.
class X11InputIdle : public InputIdle {
  public:
    X11InputIdle();

    [[nodiscard]] std::optional<double> secondsSinceLastInput() const override;

  private:
    using Clock = std::chrono::steady_clock;

    std::uint32_t root_ = 0;  // 0: it cannot be told
    // What the readings so far amount to.
    mutable Clock::time_point lastReading_;
    mutable std::optional<Clock::time_point> lastInput_;
};

}  // namespace ostrel
