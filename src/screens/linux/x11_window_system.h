#pragma once

#include "screens/window_system.h"

namespace ostrel {

// Windows on X11, and on Wayland as far as the toolkit goes.
//
// Window managers of X11 do not get to see the windows: that alone keeps them above panels and
// full-screen programs everywhere. They never take the input focus, so that the program beneath
// still has it afterwards; keys come by a grab of the keyboard.
class X11WindowSystem : public WindowSystem {
  public:
    [[nodiscard]] bool canBeTranslucent() const override;
    [[nodiscard]] QPixmap pictureOf(QScreen& screen, const QRect& frame) const override;
    [[nodiscard]] Qt::WindowFlags coverFlags() const override;
    [[nodiscard]] Qt::WindowFlags cardFlags() const override;
    void showCover(QWidget& window) override;
    void showCard(QWidget& window) override;
    bool setKeyboardTaken(QWidget& window, bool isTaken) override;
};

}  // namespace ostrel
