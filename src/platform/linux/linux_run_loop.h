#pragma once

#include <memory>
#include <optional>

#include "base/signal.h"
#include "platform/api/run_loop.h"

class QTimer;

namespace ostrel {

class WallAlarm;

// Timers on Qt's event loop, also on one that a callback runs inside of itself.
//
// It wakes the process only when a timer is due, and runs all that are due in one turn. Repeating
// timers that are armed in one turn, or before the first, count from the same instant, so that they
// go on sharing their wake-ups. Timers on run-loop time may come up to a millisecond late.
class LinuxRunLoop : public RunLoop {
  public:
    // `wallNow` need not be the system's clock: the distance to it is taken into account. Once that
    // distance has changed, handleClockChange() must be called.
    explicit LinuxRunLoop(NowFunction wallNow);
    LinuxRunLoop(const LinuxRunLoop&) = delete;
    LinuxRunLoop& operator=(const LinuxRunLoop&) = delete;
    ~LinuxRunLoop() override;

    [[nodiscard]] RunLoopTime now() const override;
    [[nodiscard]] Timer repeat(RunLoopClock::duration first, RunLoopClock::duration period,
                               Callback callback) override;
    [[nodiscard]] Timer callAfter(RunLoopClock::duration delay, Callback callback) override;
    [[nodiscard]] Timer callAt(WallTime due, Callback callback) override;

    // What happens when the system says that its clock was set: tells the observers, then runs what
    // has become due.
    void handleClockChange();

    // The wall clock was set, or the system slept.
    Signal<> clockWasSet;

  private:
    void runDue();
    void arm();
    void armForRunLoopTimers();
    void armForWallTimers();
    [[nodiscard]] Timer armed(Timer timer);
    [[nodiscard]] RunLoopTime instantOfThisTurn() const;

    NowFunction wallNow_;
    std::optional<RunLoopTime> turnBegan_;
    std::optional<RunLoopTime> armedFor_;
    bool alarmIsSet_ = false;
    std::optional<WallTime> alarmSetFor_;
    std::shared_ptr<const int> alive_;
    TimerQueue queue_;
    std::unique_ptr<QTimer> timer_;
    std::unique_ptr<WallAlarm> alarm_;
};

}  // namespace ostrel
