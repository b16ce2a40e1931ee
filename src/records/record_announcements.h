#pragma once

#include <cstdint>

// What the records have to tell the user through those above them.
namespace ostrel {

class SkipStreakNotifying {
  public:
    virtual ~SkipStreakNotifying() = default;
    // `count` skips within the last hour.
    virtual void postSkipStreak(std::int64_t count) = 0;
};

class DayEndNotifying {
  public:
    virtual ~DayEndNotifying() = default;
    virtual void postDayEnd(std::int64_t completed, std::int64_t goal) = 0;
};

}  // namespace ostrel
