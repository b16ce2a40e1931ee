#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "base/clock.h"
#include "base/timer_queue.h"
#include "platform/api/run_loop.h"

namespace ostrel {

// A RunLoop over a queue of timers and whatever the system has to wake it in time.
//
// How much time has gone by is read from the clocks at each turn, never counted. Repeating timers
// that are armed in one turn, or before the first, count from the same instant, so that they share
// their wake-ups.
class QueuedRunLoop : public RunLoop {
  public:
    struct Clocks {
        std::function<RunLoopTime()> now;
        NowFunction wallNow;
    };

    QueuedRunLoop(const QueuedRunLoop&) = delete;
    QueuedRunLoop& operator=(const QueuedRunLoop&) = delete;
    ~QueuedRunLoop() override;

    [[nodiscard]] RunLoopTime now() const override { return clocks_.now(); }
    [[nodiscard]] Timer repeat(RunLoopClock::duration first, RunLoopClock::duration period,
                               Callback callback) override;
    [[nodiscard]] Timer callAfter(RunLoopClock::duration delay, Callback callback) override;
    [[nodiscard]] Timer callAt(WallTime due, Callback callback) override;

  protected:
    explicit QueuedRunLoop(Clocks clocks);

    // Runs what is due. After a while the other events of the system's loop get their turn.
    void runDue();

    // Sees to it that the system calls runDue() when the next timer is due, and not for one that
    // was stopped.
    virtual void arm() = 0;
    // Likewise in the next turn of the system's loop.
    virtual void armAtOnce() = 0;

    [[nodiscard]] const TimerQueue& queue() const { return queue_; }
    [[nodiscard]] WallTime wallNow() const { return clocks_.wallNow(); }
    // Expires with this object: for after a callback that may have destroyed it.
    [[nodiscard]] std::weak_ptr<const int> alive() const { return alive_; }

  private:
    [[nodiscard]] Timer armed(Timer timer);
    [[nodiscard]] RunLoopTime instantOfThisTurn() const;

    Clocks clocks_;
    std::optional<RunLoopTime> turnBegan_;
    TimerQueue queue_;
    std::shared_ptr<const int> alive_;
};

}  // namespace ostrel
