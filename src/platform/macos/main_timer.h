#pragma once

#include <memory>

#include "platform/macos/mac_run_loop.h"

namespace ostrel {

// One NSTimer on the main run loop that is set anew each time; it rings while a menu is open, too,
// and stands still while the system sleeps.
class MainTimer : public MacRunLoop::Alarm {
  public:
    MainTimer();
    MainTimer(const MainTimer&) = delete;
    MainTimer& operator=(const MainTimer&) = delete;
    ~MainTimer() override;

    void ringIn(std::optional<RunLoopClock::duration> wait) override;

  private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace ostrel
