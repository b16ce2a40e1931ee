#include "records/break_log.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <utility>

#include "base/checked_seconds.h"
#include "platform/api/calendar.h"

namespace ostrel {

BreakLog::BreakLog(PreferencesStore& preferences, const Calendar& calendar, NowFunction now)
    : calendar_(calendar),
      now_(std::move(now)),
      document_(preferences, "ostrel.breakLog.v1", DocumentBytes::OnEncodingFailure::stayQuiet),
      entries_(document_.load().value_or(std::vector<BreakLogEntry>{})) {}

void BreakLog::append(const BreakLogEntry& entry) {
    const auto oldest = startOfDayBefore(kRetentionDays);
    const auto isTooOld = [&](const BreakLogEntry& old) { return oldest && old.endedAt < *oldest; };
    std::size_t dropped = 0;
    bool isGrown = true;
    const bool followsSaved = savedAppends_ == appends_;
    const std::uint64_t append = ++appends_;
    entries_.alter([&](std::vector<BreakLogEntry>& entries) {
        entries.push_back(entry);
        const auto firstKept = std::ranges::find_if_not(entries, isTooOld);
        dropped = static_cast<std::size_t>(firstKept - entries.begin());
        entries.erase(entries.begin(), firstKept);
        // The list is out of order where the clock was set back.
        const std::size_t erased = std::erase_if(entries, isTooOld);
        isGrown = erased == 0;
        return !isTooOld(entry) || dropped + erased > 1;
    });
    // An observer that appended has saved this entry as well.
    if (append == appends_) {
        if (isGrown && followsSaved) {
            document_.saveGrown(*entries_, dropped);
        } else {
            document_.save(*entries_);
        }
        savedAppends_ = append;
    }
    didAppend.send(entry);
}

std::int64_t BreakLog::dayAge(const BreakLogEntry& entry) const {
    return calendar_.daysBetween(entry.endedAt, now_());
}

// Whether an entry is older than so many days is asked of every entry at once: one comparison of
// instants each instead of two looks into the calendar.
std::optional<WallTime> BreakLog::startOfDayBefore(std::int64_t days) const {
    const auto thatDay = calendar_.addDays(now_(), -days);
    return thatDay ? std::optional(calendar_.startOfDay(*thatDay)) : std::nullopt;
}

std::vector<BreakLogEntry> BreakLog::entriesOf(std::int64_t lastDays) const {
    const auto first = startOfDayBefore(lastDays - 1);
    std::vector<BreakLogEntry> span;
    std::copy_if(entries_->begin(), entries_->end(), std::back_inserter(span),
                 [&](const BreakLogEntry& entry) { return !first || entry.endedAt >= *first; });
    return span;
}

AggregatedTotals BreakLog::totals(std::int64_t lastDays) const {
    using Outcome = BreakLogEntry::Outcome;
    AggregatedTotals totals;
    std::int64_t skipped = 0;
    std::int64_t shown = 0;
    std::int64_t penaltySec = 0;
    std::int64_t penalized = 0;
    for (const BreakLogEntry& entry : entriesOf(lastDays)) {
        if (entry.outcome == Outcome::completed) {
            ++(entry.kind == BreakKind::eye ? totals.eye : totals.body);
        }
        skipped += entry.outcome == Outcome::skipped ? 1 : 0;
        shown += entry.outcome != Outcome::deferred ? 1 : 0;
        if (entry.penaltyAppliedSec > 0) {
            penaltySec = addSec(penaltySec, entry.penaltyAppliedSec);
            ++penalized;
        }
    }
    if (shown > 0) {
        totals.skipRate = static_cast<double>(skipped) / static_cast<double>(shown);
    }
    if (penalized > 0) {
        totals.avgPenaltySec =
            wholeSec(std::round(static_cast<double>(penaltySec) / static_cast<double>(penalized)));
    }
    return totals;
}

std::int64_t BreakLog::takenBetween(WallTime from, WallTime to) const {
    return std::ranges::count_if(*entries_, [&](const BreakLogEntry& entry) {
        return entry.isTaken() && entry.endedAt >= from && entry.endedAt < to;
    });
}

}  // namespace ostrel
