#pragma once

#include <chrono>
#include <cstdint>
#include <functional>

namespace ostrel {

// The time of day people see: seconds since 2001-01-01 00:00:00 UTC in a double, as stored in
// documents. It jumps when the clock is set and goes on while the system sleeps.
struct WallClock {
    using rep = double;
    using period = std::ratio<1>;
    using duration = std::chrono::duration<rep, period>;
    using time_point = std::chrono::time_point<WallClock>;
    static constexpr bool is_steady = false;

    // What to subtract from Unix time (seconds since 1970-01-01 UTC).
    static constexpr std::int64_t kUnixOffsetSec = 978'307'200;
};
using WallTime = WallClock::time_point;

// The time of repeating and one-shot timers: it stands still while the system sleeps and never
// jumps. Its zero has no meaning; a WallTime cannot be compared with it.
struct RunLoopClock {
    using rep = std::int64_t;
    using period = std::nano;
    using duration = std::chrono::duration<rep, period>;
    using time_point = std::chrono::time_point<RunLoopClock>;
    static constexpr bool is_steady = true;
};
using RunLoopTime = RunLoopClock::time_point;

// The current wall time. Only owners of timers keep one; decisions are handed their `now`.
using NowFunction = std::function<WallTime()>;

[[nodiscard]] constexpr double secondsSinceReference(WallTime time) {
    return time.time_since_epoch().count();
}

[[nodiscard]] constexpr WallTime wallTimeAt(double secondsSinceReferenceDate) {
    return WallTime{WallClock::duration{secondsSinceReferenceDate}};
}

// Rounded to the nanosecond.
[[nodiscard]] inline RunLoopClock::duration runLoopSec(double seconds) {
    return std::chrono::round<RunLoopClock::duration>(std::chrono::duration<double>(seconds));
}

[[nodiscard]] constexpr double inSeconds(RunLoopClock::duration duration) {
    return static_cast<double>(duration.count()) / RunLoopClock::period::den;
}

// A whole number of seconds as wall-clock distance.
[[nodiscard]] constexpr WallClock::duration wallSec(std::int64_t seconds) {
    return WallClock::duration{static_cast<double>(seconds)};
}

}  // namespace ostrel
