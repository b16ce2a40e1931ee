#pragma once

#include <memory>
#include <optional>
#include <utility>

#include "base/signal.h"
#include "platform/loop/queued_run_loop.h"

namespace ostrel {

// Timers on the main run loop, also while a menu or a dialogue runs it.
//
// One alarm is set for the earliest of all timers, and rings for all that are due.
class MacRunLoop : public QueuedRunLoop {
  public:
    // Rings once; setting it again replaces what was set.
    class Alarm {
      public:
        virtual ~Alarm() = default;

        // Time in which the system sleeps does not count. Absent: not at all.
        virtual void ringIn(std::optional<RunLoopClock::duration> wait) = 0;

        Signal<> rang;
    };
    // `now` stands still while the system sleeps.
    MacRunLoop(Clocks clocks, std::unique_ptr<Alarm> alarm);
    MacRunLoop(const MacRunLoop&) = delete;
    MacRunLoop& operator=(const MacRunLoop&) = delete;
    ~MacRunLoop() override;

    // To be called when the clock was set or the system slept: runs what has become due.
    void recheck();

    // While it is held no timer runs; after that recheck() runs what has become due.
    void setHeld(bool isHeld) { isHeld_ = isHeld; }

    // The alarm rang, and no timer has run yet: the moment to see that the system slept, where it
    // has not said so yet.
    Signal<> turnBegins;

  private:
    using Due = std::pair<std::optional<RunLoopTime>, std::optional<WallTime>>;

    void arm() override;
    void armAtOnce() override;

    bool isHeld_ = false;
    std::optional<Due> armedFor_;
    std::unique_ptr<Alarm> alarm_;
    Subscription rings_;
};

}  // namespace ostrel
