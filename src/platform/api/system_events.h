#pragma once

#include <optional>

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
    Signal<> didBecomeActive;  // the user turned to this program
};

}  // namespace ostrel
