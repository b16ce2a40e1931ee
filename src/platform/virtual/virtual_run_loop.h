#pragma once

#include "platform/api/run_loop.h"

namespace ostrel {

// A run loop that does not wait: time passes only when it is told to, and then at once. Run-loop
// time and wall time can be moved apart, as sleep and a clock that is set do.
class VirtualRunLoop : public RunLoop {
  public:
    explicit VirtualRunLoop(WallTime start) : wallOrigin_(start) {}

    [[nodiscard]] RunLoopTime now() const override { return now_; }
    [[nodiscard]] Timer repeat(RunLoopClock::duration first, RunLoopClock::duration period,
                               Callback callback) override;
    [[nodiscard]] Timer callAfter(RunLoopClock::duration delay, Callback callback) override;
    [[nodiscard]] Timer callAt(WallTime due, Callback callback) override;

    [[nodiscard]] WallTime wallNow() const;

    // Runs what falls due until `end`, what is due at exactly that instant included.
    void runFor(RunLoopClock::duration length) { runUntil(now_ + length); }
    void runUntil(RunLoopTime end);

    // Likewise, but leaves what is due at exactly `end` for later.
    void runUpTo(RunLoopTime end);

    // Moves the wall clock alone: a sleep, or a clock that is set. Timers that have become due
    // wait for the next run.
    void shiftWallClock(WallClock::duration by) { wallOrigin_ += by; }

    // Runs what is due now.
    void runDue();

    // After a sleep: the wall-clock timers that are overdue run before anything else.
    void runOverdueWallTimers();

  private:
    [[nodiscard]] std::optional<RunLoopTime> nextDue() const;

    RunLoopTime now_;
    WallTime wallOrigin_;  // what the wall clock would show at run-loop time zero
    TimerQueue queue_;
};

}  // namespace ostrel
