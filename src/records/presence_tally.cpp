#include "records/presence_tally.h"

#include <algorithm>
#include <utility>

#include "platform/api/calendar.h"
#include "records/break_log.h"

namespace ostrel {
namespace {

// A document that others wrote may have its days in any order.
std::vector<PresenceDay> inOrder(std::vector<PresenceDay> days) {
    std::ranges::stable_sort(days, {}, &PresenceDay::day);
    return days;
}

}  // namespace

bool PresenceDay::isSound() const {
    const auto isCount = [](std::int64_t count) { return count >= 0 && count <= kMost; };
    return isCount(held) && isCount(credited);
}

PresenceTally::PresenceTally(PreferencesStore& preferences, const Calendar& calendar,
                             NowFunction now)
    : calendar_(calendar),
      now_(std::move(now)),
      document_(preferences, "ostrel.presenceTally.v1"),
      days_(inOrder(document_.load().value_or(std::vector<PresenceDay>{}))) {}

CalendarDay PresenceTally::today() const {
    return calendar_.components(now_()).day;
}

void PresenceTally::count(std::int64_t PresenceDay::*figure) {
    const CalendarDay day = today();
    std::vector<PresenceDay> next = *days_;
    std::erase_if(next, [day](const PresenceDay& old) {
        return daysBetween(old.day, day) >= BreakLog::kRetentionDays;
    });
    auto counted = std::ranges::lower_bound(next, day, {}, &PresenceDay::day);
    if (counted == next.end() || counted->day != day) {
        counted = next.insert(counted, PresenceDay{day});
    }
    (*counted).*figure = std::min((*counted).*figure + 1, PresenceDay::kMost);
    days_.set(std::move(next));
    document_.save(*days_);
}

PresenceTally::Totals PresenceTally::totals(std::int64_t lastDays) const {
    const CalendarDay last = today();
    Totals totals;
    for (const PresenceDay& counted : *days_) {
        if (daysBetween(counted.day, last) < lastDays) {
            totals.held += counted.held;
            totals.credited += counted.credited;
        }
    }
    return totals;
}

}  // namespace ostrel
