#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

class QSocketNotifier;

namespace ostrel {

// Rings on the main thread when the system's wall clock shows a time, and whenever that clock was
// set. A computer that wakes from sleep counts as one whose clock was set.
class WallAlarm {
  public:
    enum class Reason { due, clockSet };
    using Ring = std::function<void(Reason)>;
    using UnixTime = std::chrono::nanoseconds;  // since 1970-01-01 UTC

    explicit WallAlarm(Ring ring);
    WallAlarm(const WallAlarm&) = delete;
    WallAlarm& operator=(const WallAlarm&) = delete;
    ~WallAlarm();

    // Rings once at `due`; in the past is the next turn of the loop. Absent: only for a set clock.
    // A later call replaces an earlier one.
    void setFor(std::optional<UnixTime> due);

  private:
    void rang();

    Ring ring_;
    int timer_ = -1;
    std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace ostrel
