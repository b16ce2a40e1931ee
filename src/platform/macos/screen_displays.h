#pragma once

#include <memory>

#include "platform/api/displays.h"

namespace ostrel {

// The screens of AppKit, in its order: the first has the menu bar. A set of mirrored displays is
// one. Needs the shared NSApplication, which QApplication makes.
class ScreenDisplays : public Displays {
  public:
    ScreenDisplays();
    ScreenDisplays(const ScreenDisplays&) = delete;
    ScreenDisplays& operator=(const ScreenDisplays&) = delete;
    ~ScreenDisplays() override;

    [[nodiscard]] std::vector<Display> current() const override;

    // The screen of the window that has the keyboard, whichever program's it is.
    [[nodiscard]] std::optional<std::uint32_t> mainDisplayID() const override;

  private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace ostrel
