#pragma once

#include "base/clock.h"
#include "base/subscription.h"
#include "platform/api/run_loop.h"

namespace ostrel {

class Calendar;
class SystemEvents;

// Sends SystemEvents::dayChanged at every midnight of the calendar, on a system that does not tell
// of it by itself. What it is given outlives the watch.
class DayWatch {
  public:
    DayWatch(SystemEvents& events, const Calendar& calendar, RunLoop& runLoop, NowFunction now);
    DayWatch(const DayWatch&) = delete;
    DayWatch& operator=(const DayWatch&) = delete;

  private:
    void awaitMidnight();

    SystemEvents& events_;
    const Calendar& calendar_;
    RunLoop& runLoop_;
    NowFunction now_;
    Timer midnightTimer_;
    Subscription clockChanges_;
};

}  // namespace ostrel
