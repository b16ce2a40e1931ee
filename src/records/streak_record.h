#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>
#include <tuple>
#include <vector>

#include "base/clock.h"
#include "base/day_key.h"
#include "core/settings/json_record.h"

namespace ostrel {

// Days in a row on which the goal was reached.
struct Streak {
    std::int64_t currentDays = 0;
    std::int64_t longestDays = 0;

    bool operator==(const Streak&) const = default;
};

// What the streak is worked out from. It outlives the break log: days that have left `recent` are
// kept as a sum.
struct StreakRecord {
    enum class Verdict { reached, missed, free };

    // A day that was judged stays judged, whatever becomes of the goal. Of a reached day the breaks
    // from the first to the last are used up for it.
    struct JudgedDay {
        CalendarDay day;
        Verdict verdict = Verdict::missed;
        WallTime judgedAt;
        std::optional<WallTime> firstBreakAt;
        std::optional<WallTime> lastBreakAt;

        static constexpr auto fields() {
            return std::tuple{Field{"day", &JudgedDay::day}, Field{"verdict", &JudgedDay::verdict},
                              Field{"judgedAt", &JudgedDay::judgedAt},
                              Field{"firstBreakAt", &JudgedDay::firstBreakAt},
                              Field{"lastBreakAt", &JudgedDay::lastBreakAt}};
        }
        bool operator==(const JudgedDay&) const = default;
    };

    std::int64_t earlierDays = 0;   // the streak as it was before the first of `recent`
    std::int64_t longestDays = 0;   // also of a streak that is over
    std::vector<JudgedDay> recent;  // ascending

    static constexpr auto fields() {
        return std::tuple{Field{"earlierDays", &StreakRecord::earlierDays},
                          Field{"longestDays", &StreakRecord::longestDays},
                          Field{"recent", &StreakRecord::recent}};
    }
    // Whether a record that was read can be one that was written.
    [[nodiscard]] bool isSound() const;

    bool operator==(const StreakRecord&) const = default;
};

constexpr std::array<std::string_view, 3> enumNames(StreakRecord::Verdict) {
    return {"reached", "missed", "free"};
}

}  // namespace ostrel
