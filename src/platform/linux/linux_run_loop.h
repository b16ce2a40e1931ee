#pragma once

#include <memory>
#include <optional>

#include "base/signal.h"
#include "platform/loop/queued_run_loop.h"

class QTimer;

namespace ostrel {

class WallAlarm;

// Timers on Qt's event loop, also on one that a callback runs inside of itself.
//
// It wakes the process only when a timer is due, and runs all that are due in one turn. Timers on
// run-loop time may come up to a millisecond late.
class LinuxRunLoop : public QueuedRunLoop {
  public:
    // `wallNow` need not be the system's clock: the distance to it is taken into account. Once that
    // distance has changed, handleClockChange() must be called.
    explicit LinuxRunLoop(NowFunction wallNow);
    LinuxRunLoop(const LinuxRunLoop&) = delete;
    LinuxRunLoop& operator=(const LinuxRunLoop&) = delete;
    ~LinuxRunLoop() override;

    // What happens when the system says that its clock was set: tells the observers, then runs what
    // has become due.
    void handleClockChange();

    // The wall clock was set, or the system slept.
    Signal<> clockWasSet;

  private:
    void arm() override;
    void armAtOnce() override;
    void armForRunLoopTimers();
    void armForWallTimers();

    std::optional<RunLoopTime> armedFor_;
    bool alarmIsSet_ = false;
    std::optional<WallTime> alarmSetFor_;
    std::unique_ptr<QTimer> timer_;
    std::unique_ptr<WallAlarm> alarm_;
};

}  // namespace ostrel
