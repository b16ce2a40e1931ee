#pragma once

#include <array>
#include <cstdint>
#include <string_view>
#include <vector>

#include "base/clock.h"
#include "records/break_log_entry.h"

namespace ostrel {

class BreakLog;
class Calendar;

struct ReportSummaryStats {
    std::int64_t eyeCompleted = 0;
    std::int64_t bodyCompleted = 0;
    double skipRate = 0;  // 0 to 1
    std::int64_t avgPenaltySec = 0;
    std::int64_t postponements = 0;

    bool operator==(const ReportSummaryStats&) const = default;
};

// The breaks completed on one day.
struct ReportSummaryDayBucket {
    WallTime id;   // the day itself: there is one bucket a day
    WallTime day;  // its start
    std::int64_t eye = 0;
    std::int64_t body = 0;

    bool operator==(const ReportSummaryDayBucket&) const = default;
};

// What the report says about the break log, worked out afresh at each question.
class ReportSummaryView {
  public:
    enum class Range { weekly, monthly, full };

    // All of these outlive the view.
    ReportSummaryView(const BreakLog& log, const Calendar& calendar, NowFunction now);

    [[nodiscard]] static std::int64_t days(Range range);

    [[nodiscard]] ReportSummaryStats stats(Range range) const;

    // One bucket per day of the range, also for days without a break, oldest first, today last.
    [[nodiscard]] std::vector<ReportSummaryDayBucket> dayBuckets(
        const std::vector<BreakLogEntry>& entries, Range range) const;

  private:
    const BreakLog& log_;
    const Calendar& calendar_;
    NowFunction now_;
};

constexpr std::array<std::string_view, 3> enumNames(ReportSummaryView::Range) {
    return {"weekly", "monthly", "full"};
}

}  // namespace ostrel
