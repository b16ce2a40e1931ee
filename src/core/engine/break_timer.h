#pragma once

#include <cstdint>

namespace ostrel {

// One countdown. It stores seconds left, not a due date: time spent paused, away, asleep or with
// the program closed does not count.
struct BreakTimer {
    std::int64_t remainingSec = 0;       // working seconds until the break is due
    bool isRunning = false;              // advances on ticks
    bool isAway = false;                 // the user is away: does not advance
    std::int64_t pendingPenaltySec = 0;  // what the next break of this kind is lengthened by

    bool operator==(const BreakTimer&) const = default;
};

struct TimerState {
    BreakTimer eye;
    BreakTimer body;

    bool operator==(const TimerState&) const = default;
};

}  // namespace ostrel
