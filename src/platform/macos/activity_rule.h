#pragma once

namespace ostrel {

// What the schedule is about.
struct ScheduleActivity {
    bool isEnabled = true;
    bool isPaused = false;
    bool isAway = false;       // both countdowns stand still until the user is back
    bool isBreakHeld = false;  // until a call or a film is over
    bool isBreakPresented = false;
};

// Whether the system may not put this program to its nap. The countdowns count ticks: where the nap
// stretches a second they stretch with it, and a break counted down in front of the user would
// stutter. While nothing counts, the nap is welcome.
[[nodiscard]] constexpr bool needsToStayAwake(const ScheduleActivity& schedule) {
    const bool isCounting = schedule.isEnabled && !schedule.isPaused && !schedule.isAway;
    return isCounting || schedule.isBreakHeld || schedule.isBreakPresented;
}

}  // namespace ostrel
