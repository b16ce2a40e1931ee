#pragma once

#include <vector>

#include "base/subscription.h"
#include "platform/macos/activity_hold.h"

namespace ostrel {

class AppEnvironment;

// Holds off the nap of hidden programs for as long as the schedule counts or shows something.
class ScheduleNap {
  public:
    // The environment outlives it.
    explicit ScheduleNap(AppEnvironment& environment);

  private:
    void follow();

    AppEnvironment& environment_;
    ActivityHold hold_;
    std::vector<Subscription> changes_;
};

}  // namespace ostrel
