#include "records/report_summary.h"

#include <algorithm>
#include <map>
#include <utility>

#include "base/checked_seconds.h"
#include "platform/api/calendar.h"
#include "records/break_log.h"

namespace ostrel {

ReportSummaryView::ReportSummaryView(const BreakLog& log, const Calendar& calendar, NowFunction now)
    : log_(log), calendar_(calendar), now_(std::move(now)) {}

std::int64_t ReportSummaryView::days(Range range) {
    switch (range) {
        case Range::weekly:
            return 7;
        case Range::monthly:
            return 30;
        case Range::full:
            break;
    }
    return BreakLog::kRetentionDays;
}

ReportSummaryStats ReportSummaryView::stats(Range range) const {
    const AggregatedTotals totals = log_.totals(days(range));
    const auto span = log_.entriesOf(days(range));
    const auto postponements =
        std::ranges::count(span, BreakLogEntry::Outcome::postponed, &BreakLogEntry::outcome);
    return {totals.eye, totals.body, totals.skipRate, totals.avgPenaltySec, postponements};
}

std::vector<ReportSummaryDayBucket> ReportSummaryView::dayBuckets(
    const std::vector<BreakLogEntry>& entries, Range range) const {
    struct Counts {
        std::int64_t eye = 0;
        std::int64_t body = 0;
    };
    std::map<WallTime, Counts> countsByDay;
    for (const BreakLogEntry& entry : entries) {
        if (entry.outcome == BreakLogEntry::Outcome::completed) {
            Counts& counts = countsByDay[calendar_.startOfDay(entry.endedAt)];
            std::int64_t& count = entry.kind == BreakKind::body ? counts.body : counts.eye;
            count = addSec(count, 1);
        }
    }
    const WallTime today = calendar_.startOfDay(now_());
    std::vector<ReportSummaryDayBucket> buckets;
    for (std::int64_t offset = days(range) - 1; offset >= 0; --offset) {
        const auto moved = calendar_.addDays(today, -offset);
        if (!moved) {
            continue;
        }
        // A day whose midnight does not exist starts later than the one it was counted from.
        const WallTime day = calendar_.startOfDay(*moved);
        if (!buckets.empty() && buckets.back().day == day) {
            continue;
        }
        const auto found = countsByDay.find(day);
        const Counts counts = found == countsByDay.end() ? Counts{} : found->second;
        buckets.push_back({day, day, counts.eye, counts.body});
    }
    return buckets;
}

}  // namespace ostrel
