#pragma once

#include <cstdint>
#include <vector>

#include "records/break_log_entry.h"

namespace ostrel {

// The breaks of one undisturbed working day.
struct DayPlan {
    struct Break {
        BreakKind kind;
        std::int64_t atSec;  // since the day began
        std::int64_t durationSec;
    };

    std::int64_t startMinute = 0;  // after local midnight
    std::int64_t lengthSec = 0;
    std::vector<Break> breaks;  // in order
};

}  // namespace ostrel
