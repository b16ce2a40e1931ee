#pragma once

#include <QTimer>
#include <functional>

namespace ostrel {

// Holds the keyboard for a window. While it is wanted and another program has it, asks again until
// it is given.
class KeyboardGrab {
  public:
    static constexpr int kRetryMs = 200;

    // Takes (true) or lets go of (false) the keyboard; answers whether that worked. What was asked
    // for may come later, so it is let go of in any case.
    using SetGrabbed = std::function<bool(bool isGrabbed)>;

    explicit KeyboardGrab(SetGrabbed setGrabbed);
    KeyboardGrab(const KeyboardGrab&) = delete;
    KeyboardGrab& operator=(const KeyboardGrab&) = delete;
    ~KeyboardGrab() { release(); }

    void take();
    void release();

  private:
    void attempt();

    SetGrabbed setGrabbed_;
    bool isWanted_ = false;
    QTimer retry_;
};

}  // namespace ostrel
