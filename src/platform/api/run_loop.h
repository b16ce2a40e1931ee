#pragma once

#include <functional>

#include "base/clock.h"
#include "base/timer_queue.h"

namespace ostrel {

// Timers on the main thread. A timer stops when its handle is destroyed and never fires inside the
// call that arms it. At one instant timers fire in the order in which they were armed.
class RunLoop {
  public:
    using Callback = std::function<void()>;

    virtual ~RunLoop() = default;

    // Stands still while the system sleeps; unaffected by a clock that is set.
    [[nodiscard]] virtual RunLoopTime now() const = 0;

    // First fires `first` from now, then every `period` on that grid; firings that were missed
    // (a busy thread, a stopped process) are skipped, not made up for.
    [[nodiscard]] virtual Timer repeat(RunLoopClock::duration first, RunLoopClock::duration period,
                                       Callback callback) = 0;

    // Fires once. A delay of zero or less means the next turn of the loop.
    [[nodiscard]] virtual Timer callAfter(RunLoopClock::duration delay, Callback callback) = 0;

    // Fires once, when the wall clock shows `due` or later: after a sleep, or a clock that was set
    // past it, at once; a clock set back puts it off.
    [[nodiscard]] virtual Timer callAt(WallTime due, Callback callback) = 0;
};

}  // namespace ostrel
