#pragma once

#include <vector>

#include "base/subscription.h"

namespace ostrel {

class AppEnvironment;

// With OSTREL_TRACE=1 in the process's environment, writes down on standard error when a break fell
// due and when each window had painted: "trace due MS" and "trace painted DISPLAY MS", in
// milliseconds of the monotonic clock. For measuring.
class BreakTrace {
  public:
    explicit BreakTrace(AppEnvironment& environment);

  private:
    std::vector<Subscription> subscriptions_;
};

}  // namespace ostrel
