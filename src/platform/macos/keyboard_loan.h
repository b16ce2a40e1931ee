#pragma once

#include <memory>

namespace ostrel {

// The keyboard for a window of ours, and back to the program that had it. Here a window gets keys
// only in the program that is in front.
class KeyboardLoan {
  public:
    KeyboardLoan();
    KeyboardLoan(const KeyboardLoan&) = delete;
    KeyboardLoan& operator=(const KeyboardLoan&) = delete;
    ~KeyboardLoan();  // gives it back

    // `view` is the NSView of a window that is there, as QWidget::winId() gives it. Taken twice it
    // is still owed to the first. Whether the window has it by now: the system takes its time.
    bool take(void* view);

    void giveBack();

  private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace ostrel
