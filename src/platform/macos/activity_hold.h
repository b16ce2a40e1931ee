#pragma once

#include <memory>

#include "platform/macos/activity_rule.h"

namespace ostrel {

// Holds off the nap that the system takes with programs nobody looks at, as the schedule needs it.
// The computer and its displays sleep as ever.
class ActivityHold {
  public:
    ActivityHold();
    ActivityHold(const ActivityHold&) = delete;
    ActivityHold& operator=(const ActivityHold&) = delete;
    ~ActivityHold();

    void follow(const ScheduleActivity& schedule);

  private:
    struct Activity;
    std::unique_ptr<Activity> activity_;  // while it is held off
};

}  // namespace ostrel
