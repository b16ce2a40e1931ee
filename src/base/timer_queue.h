#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "base/clock.h"
#include "base/subscription.h"

namespace ostrel {

// A timer is stopped by destroying it; a callback may stop or replace its own timer.
using Timer = Subscription;

// The timers of one run loop, on both clocks, without a clock or a loop of its own: whoever owns it
// waits until the earliest is due and then calls runNext().
//
// Of the timers that are due the most overdue runs first, then the one that was armed first. A
// repeating timer keeps its grid: after a delay it fires once and goes on at its next multiple.
class TimerQueue {
  public:
    using Callback = std::function<void()>;

    TimerQueue();
    TimerQueue(const TimerQueue&) = delete;
    TimerQueue& operator=(const TimerQueue&) = delete;
    ~TimerQueue();

    // `period` zero: fires once. Negative is fatal.
    [[nodiscard]] Timer add(RunLoopTime due, RunLoopClock::duration period, Callback callback);

    // Fires once, when the wall clock shows `due` or later.
    [[nodiscard]] Timer add(WallTime due, Callback callback);

    [[nodiscard]] std::optional<RunLoopTime> nextRunLoopDue() const;
    [[nodiscard]] std::optional<WallTime> nextWallDue() const;

    // Runs one timer that is due at these times; false when none is.
    bool runNext(RunLoopTime runLoopNow, WallTime wallNow);

  private:
    struct Entry;
    struct State;

    Timer insert(const std::shared_ptr<Entry>& entry);

    std::shared_ptr<State> state_;
};

}  // namespace ostrel
