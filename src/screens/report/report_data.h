#pragma once

#include <cstdint>
#include <vector>

#include "base/day_key.h"
#include "records/report_summary.h"
#include "records/streak_record.h"

namespace ostrel {

struct ReportServices;

// The breaks of one day that were taken.
struct ReportDay {
    CalendarDay day;
    std::int64_t eye = 0;    // ended by the user
    std::int64_t body = 0;   // likewise
    std::int64_t faded = 0;  // ended by themselves, of either kind

    [[nodiscard]] std::int64_t total() const;

    bool operator==(const ReportDay&) const = default;
};

// Everything that the report shows, of one moment.
struct ReportData {
    enum class Content { none, noneInRange, some };

    ReportSummaryView::Range range = ReportSummaryView::Range::weekly;
    Content content = Content::none;
    ReportSummaryStats stats;
    std::int64_t fadedOut = 0;
    std::int64_t held = 0;        // held back, whatever became of them
    std::int64_t dropped = 0;     // held back until it was too late
    std::int64_t credited = 0;    // an absence counted as the break
    std::vector<ReportDay> days;  // oldest first, today last; never empty
    std::int64_t takenToday = 0;
    std::int64_t goal = 0;
    Streak streak;

    bool operator==(const ReportData&) const = default;
};

[[nodiscard]] ReportData readReport(const ReportServices& services, ReportSummaryView::Range range);

}  // namespace ostrel
