#pragma once
#include_next <time.h>

// A Mac's clocks carry numbers of their own. Since macOS 10.12.
#ifdef __APPLE__
#undef CLOCK_MONOTONIC_RAW
#define CLOCK_MONOTONIC_RAW 4
#define CLOCK_UPTIME_RAW 8
#endif
