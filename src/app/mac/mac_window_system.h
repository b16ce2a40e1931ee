#pragma once

#include <QTimer>

#include "platform/macos/keyboard_loan.h"
#include "screens/window_system.h"

namespace ostrel {

// Windows of a Mac: levels, Spaces and the keyboard are asked of AppKit. Needs a QApplication.
class MacWindowSystem : public WindowSystem {
  public:
    MacWindowSystem();

    void showCover(QWidget& window) override;
    void showCard(QWidget& window) override;
    bool setKeyboardTaken(QWidget& window, bool isTaken) override;

  private:
    KeyboardLoan keyboard_;
    QTimer giveBack_;
};

}  // namespace ostrel
