#include "app/control/control_report.h"

#include "platform/api/calendar.h"
#include "records/break_log.h"
#include "records/break_log_export.h"
#include "records/presence_tally.h"

namespace ostrel {
namespace {

using Outcome = BreakLogEntry::Outcome;

ControlReport reportOf(const ControlReportSources& from, ReportSummaryView::Range range) {
    const ReportSummaryView view(from.log, from.calendar, from.now);
    const ReportSummaryStats stats = view.stats(range);
    const auto presence = from.tally.totals(ReportSummaryView::days(range));
    ControlReport report;
    report.range = range;
    report.eyeCompleted = stats.eyeCompleted;
    report.bodyCompleted = stats.bodyCompleted;
    report.skipRate = stats.skipRate;
    report.avgPenaltySec = stats.avgPenaltySec;
    report.postponements = stats.postponements;
    report.held = presence.held;
    report.credited = presence.credited;
    report.dailyGoalBreaks = from.dailyGoalBreaks;
    report.streakDays = from.streak.currentDays;
    report.longestStreakDays = from.streak.longestDays;
    for (const BreakLogEntry& entry : from.log.entriesOf(ReportSummaryView::days(range))) {
        if (entry.outcome == Outcome::autoFadeOut) {
            ++(entry.kind == BreakKind::eye ? report.eyeFadedOut : report.bodyFadedOut);
        }
        report.dropped += entry.outcome == Outcome::deferred ? 1 : 0;
    }
    for (const ReportSummaryDayBucket& bucket : view.dayBuckets(*from.log.entries(), range)) {
        report.days.push_back({from.calendar.components(bucket.day).day, bucket.eye, bucket.body});
    }
    return report;
}

}  // namespace

ControlOutcome printReport(const ControlReportSources& sources, std::string_view range,
                           std::string_view format) {
    const auto span = enumFrom<ReportSummaryView::Range>(range);
    if (!span) {
        return ControlOutcome::invalid({"cli.error.range %@", {std::string(range)}});
    }
    if (format == "csv") {
        return ControlOutcome::done(
            exportCsv(sources.log.entriesOf(ReportSummaryView::days(*span)), sources.calendar));
    }
    if (format != "json") {
        return ControlOutcome::invalid({"cli.error.format %@", {std::string(format)}});
    }
    return ControlOutcome::done(printJson(reportOf(sources, *span)).text.value_or(std::string()));
}

}  // namespace ostrel
