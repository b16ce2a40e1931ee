#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <utility>

#include "base/signal.h"
#include "platform/api/run_loop.h"

namespace ostrel {

// Timers on the main run loop, also while a menu or a dialogue runs it.
//
// One alarm is set for the earliest of all timers, and rings for all that are due. How much time
// has gone by is read from the clocks at each ring, never counted. Repeating timers that are armed
// in one turn, or before the first, count from the same instant, so that they share their wake-ups.
class MacRunLoop : public RunLoop {
  public:
    // Rings once; setting it again replaces what was set.
    class Alarm {
      public:
        virtual ~Alarm() = default;

        // Time in which the system sleeps does not count. Absent: not at all.
        virtual void ringIn(std::optional<RunLoopClock::duration> wait) = 0;

        Signal<> rang;
    };
    struct Clocks {
        NowFunction wallNow;
        std::function<RunLoopTime()> awakeNow;
    };

    MacRunLoop(Clocks clocks, std::unique_ptr<Alarm> alarm);
    MacRunLoop(const MacRunLoop&) = delete;
    MacRunLoop& operator=(const MacRunLoop&) = delete;
    ~MacRunLoop() override;

    [[nodiscard]] RunLoopTime now() const override;
    [[nodiscard]] Timer repeat(RunLoopClock::duration first, RunLoopClock::duration period,
                               Callback callback) override;
    [[nodiscard]] Timer callAfter(RunLoopClock::duration delay, Callback callback) override;
    [[nodiscard]] Timer callAt(WallTime due, Callback callback) override;

    // To be called when the clock was set or the system slept: runs what has become due.
    void recheck();

    // The alarm rang, and no timer has run yet: the moment to see that the system slept, where it
    // has not said so yet.
    Signal<> turnBegins;

  private:
    using Due = std::pair<std::optional<RunLoopTime>, std::optional<WallTime>>;

    void runDue();
    void arm();
    [[nodiscard]] Timer armed(Timer timer);
    [[nodiscard]] RunLoopTime instantOfThisTurn() const;

    Clocks clocks_;
    std::optional<RunLoopTime> turnBegan_;
    std::optional<Due> armedFor_;
    std::shared_ptr<const int> alive_;
    TimerQueue queue_;
    std::unique_ptr<Alarm> alarm_;
    Subscription rings_;
};

}  // namespace ostrel
