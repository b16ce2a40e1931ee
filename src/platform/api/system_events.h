#pragma once

#include <optional>

#include "base/published.h"
#include "base/signal.h"

namespace ostrel {

// What the system tells every program. All signals arrive on the main thread.
class SystemEvents {
  public:
    virtual ~SystemEvents() = default;

    Signal<> willSleep;  // the computer is about to sleep
    Signal<> didWake;    // it is awake again; wall-clock timers that are overdue fire after this
    // How long the sleep was that didWake is just ending, where the system says so itself.
    std::optional<double> sleptSec;
    Signal<> clockChanged;     // the clock was set or the time zone changed
    Signal<> dayChanged;       // a new calendar day has begun
    // Whether the screens show this user's session: not while it is locked, nor while another
    // user's has its turn. True where that cannot be told.
    Published<bool> isSessionOnScreen{true};
    Signal<> didBecomeActive;  // the user turned to this program
};

}  // namespace ostrel
