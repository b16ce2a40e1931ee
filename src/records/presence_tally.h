#pragma once

#include <cstdint>
#include <tuple>
#include <vector>

#include "base/clock.h"
#include "base/day_key.h"
#include "base/published.h"
#include "core/settings/document.h"

namespace ostrel {

class Calendar;

// What calls, films and absences did to the breaks of one day.
struct PresenceDay {
    static constexpr std::int64_t kMost = 1'000'000;  // more than a day has seconds

    CalendarDay day;
    std::int64_t held = 0;
    std::int64_t credited = 0;

    static constexpr auto fields() {
        return std::tuple{Field{"day", &PresenceDay::day}, Field{"held", &PresenceDay::held},
                          Field{"credited", &PresenceDay::credited}};
    }
    [[nodiscard]] bool isSound() const;

    bool operator==(const PresenceDay&) const = default;
};

// Counts, day by day, the breaks that were held back, as the hold ends, and those that an
// absence was credited as, kept under "ostrel.presenceTally.v1" for BreakLog::kRetentionDays days.
//
// Days are the user's calendar days, in the zone of the moment.
class PresenceTally {
  public:
    struct Totals {
        std::int64_t held = 0;
        std::int64_t credited = 0;

        bool operator==(const Totals&) const = default;
    };

    // All of these outlive the tally.
    PresenceTally(PreferencesStore& preferences, const Calendar& calendar, NowFunction now);

    // Oldest first; a day on which nothing was counted is left out.
    [[nodiscard]] const Published<std::vector<PresenceDay>>& days() const { return days_; }

    void countHeld() { count(&PresenceDay::held); }
    void countCredited() { count(&PresenceDay::credited); }

    // Of today and the `lastDays` - 1 days before, and, as in the break log, of days in the future.
    [[nodiscard]] Totals totals(std::int64_t lastDays) const;

  private:
    [[nodiscard]] CalendarDay today() const;
    void count(std::int64_t PresenceDay::*figure);

    const Calendar& calendar_;
    NowFunction now_;
    Document<std::vector<PresenceDay>> document_;
    Published<std::vector<PresenceDay>> days_;
};

}  // namespace ostrel
