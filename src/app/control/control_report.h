#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include "app/control/control_outcome.h"
#include "base/clock.h"
#include "core/settings/json_record.h"
#include "records/report_summary.h"
#include "records/streak_record.h"

namespace ostrel {

class BreakLog;
class Calendar;
class PresenceTally;

// The report's figures for other programs.
struct ControlReport {
    struct Day {
        CalendarDay day;
        std::int64_t eye = 0;  // breaks completed
        std::int64_t body = 0;

        static constexpr auto fields() {
            return std::tuple{Field{"day", &Day::day}, Field{"eye", &Day::eye},
                              Field{"body", &Day::body}};
        }
        bool operator==(const Day&) const = default;
    };

    ReportSummaryView::Range range = ReportSummaryView::Range::weekly;
    std::int64_t eyeCompleted = 0;
    std::int64_t bodyCompleted = 0;
    std::int64_t eyeFadedOut = 0;  // ended by themselves at their end
    std::int64_t bodyFadedOut = 0;
    double skipRate = 0;  // 0 to 1
    std::int64_t avgPenaltySec = 0;
    std::int64_t postponements = 0;
    std::int64_t held = 0;      // holds that are over, whatever became of them
    std::int64_t dropped = 0;   // breaks held back until it was too late
    std::int64_t credited = 0;  // breaks that an absence counted as
    std::int64_t dailyGoalBreaks = 0;
    std::int64_t streakDays = 0;
    std::int64_t longestStreakDays = 0;
    std::vector<Day> days;  // oldest first, today last

    static constexpr auto fields() {
        using R = ControlReport;
        return std::tuple{Field{"range", &R::range},
                          Field{"eyeCompleted", &R::eyeCompleted},
                          Field{"bodyCompleted", &R::bodyCompleted},
                          Field{"eyeFadedOut", &R::eyeFadedOut},
                          Field{"bodyFadedOut", &R::bodyFadedOut},
                          Field{"skipRate", &R::skipRate},
                          Field{"avgPenaltySec", &R::avgPenaltySec},
                          Field{"postponements", &R::postponements},
                          Field{"held", &R::held},
                          Field{"dropped", &R::dropped},
                          Field{"credited", &R::credited},
                          Field{"dailyGoalBreaks", &R::dailyGoalBreaks},
                          Field{"streakDays", &R::streakDays},
                          Field{"longestStreakDays", &R::longestStreakDays},
                          Field{"days", &R::days}};
    }
};

// What a report is made of.
struct ControlReportSources {
    const BreakLog& log;
    const PresenceTally& tally;
    const Calendar& calendar;
    NowFunction now;
    std::int64_t dailyGoalBreaks;
    Streak streak;
};

// The range is "weekly", "monthly" or "full". As "json" the figures, as "csv" the log of the breaks
// of those days.
[[nodiscard]] ControlOutcome printReport(const ControlReportSources& sources,
                                         std::string_view range, std::string_view format);

}  // namespace ostrel
