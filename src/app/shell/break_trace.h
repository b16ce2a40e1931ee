#pragma once

#include <vector>

#include "base/subscription.h"

namespace ostrel {

class AppEnvironment;

// With OSTREL_TRACE=1 in the process's environment, writes down on standard error what becomes of a
// break: "trace due MS", "trace painted DISPLAY MS", "trace zero MS" and "trace closed REASON MS",
// in milliseconds of the monotonic clock. For measuring, and for tests on a real desktop.
class BreakTrace {
  public:
    explicit BreakTrace(AppEnvironment& environment);

  private:
    std::vector<Subscription> subscriptions_;
};

}  // namespace ostrel
