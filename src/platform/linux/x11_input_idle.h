#pragma once

#include <cstdint>
#include <memory>

#include "platform/api/input_idle.h"

namespace ostrel {

class X11InputWatch;

// The time since the last input that the X server saw, by X11InputWatch; where that cannot tell,
// the time that the server counts for its screen saver (MIT-SCREEN-SAVER), which players set back
// too. Absent when Qt does not run on X11, the server is a guest in a Wayland session or lacks the
// extension. Needs a QGuiApplication.
class X11InputIdle : public InputIdle {
  public:
    X11InputIdle();
    X11InputIdle(const X11InputIdle&) = delete;
    X11InputIdle& operator=(const X11InputIdle&) = delete;
    ~X11InputIdle() override;

    [[nodiscard]] std::optional<double> secondsSinceLastInput() const override;

  private:
    std::uint32_t root_ = 0;                        // 0: it cannot be told
    mutable std::unique_ptr<X11InputWatch> watch_;  // from the first question on
};

}  // namespace ostrel
