#pragma once

#include "base/clock.h"

namespace ostrel {

// The system's wall clock.
[[nodiscard]] WallTime macWallTime();

// How long the computer has been awake since it was started: stands still in its sleep.
[[nodiscard]] RunLoopTime macAwakeTime();

// Seconds that it has slept since then.
[[nodiscard]] double macAsleepSec();

}  // namespace ostrel
