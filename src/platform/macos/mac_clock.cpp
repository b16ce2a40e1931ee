#include "platform/macos/mac_clock.h"

#include <chrono>
#include <ctime>

namespace ostrel {
namespace {

// The names of these clocks mean different things: on a Mac CLOCK_MONOTONIC goes on in a sleep,
// and so does std::chrono::steady_clock.
#ifdef __APPLE__
constexpr clockid_t kAwake = CLOCK_UPTIME_RAW;
constexpr clockid_t kAlways = CLOCK_MONOTONIC_RAW;
#else
constexpr clockid_t kAwake = CLOCK_MONOTONIC;
constexpr clockid_t kAlways = CLOCK_BOOTTIME;
#endif

RunLoopClock::duration read(clockid_t clock) {
    timespec time{};
    clock_gettime(clock, &time);
    return std::chrono::seconds{time.tv_sec} + std::chrono::nanoseconds{time.tv_nsec};
}

}  // namespace

WallTime macWallTime() {
    const auto sinceReference = std::chrono::system_clock::now().time_since_epoch() -
                                std::chrono::seconds(WallClock::kUnixOffsetSec);
    return WallTime{WallClock::duration(sinceReference)};
}

RunLoopTime macAwakeTime() {
    return RunLoopTime{read(kAwake)};
}

double macAsleepSec() {
    const auto awake = read(kAwake);
    return inSeconds(read(kAlways) - awake);
}

}  // namespace ostrel
