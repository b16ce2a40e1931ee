#pragma once

#include <memory>

namespace ostrel {

// While one of these exists the system does not put this program to its nap. The computer and its
// displays sleep as ever.
class ActivityHold {
  public:
    ActivityHold();
    ActivityHold(const ActivityHold&) = delete;
    ActivityHold& operator=(const ActivityHold&) = delete;
    ~ActivityHold();

  private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace ostrel
