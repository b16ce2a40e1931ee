#include "app/control/control_report.h"

#include "platform/api/calendar.h"
#include "records/break_log.h"
#include "records/break_log_export.h"
#include "records/presence_tally.h"

namespace ostrel {
namespace {

ControlReport reportOf(const BreakLog& log, const PresenceTally& tally, const Calendar& calendar,
                       const NowFunction& now, ReportSummaryView::Range range) {
    const ReportSummaryView view(log, calendar, now);
    const ReportSummaryStats stats = view.stats(range);
    const auto presence = tally.totals(ReportSummaryView::days(range));
    ControlReport report{range,
                         stats.eyeCompleted,
                         stats.bodyCompleted,
                         0,
                         0,
                         stats.skipRate,
                         stats.avgPenaltySec,
                         stats.postponements,
                         presence.held,
                         presence.credited,
                         {}};
    for (const BreakLogEntry& entry : log.entriesOf(ReportSummaryView::days(range))) {
        if (entry.outcome == BreakLogEntry::Outcome::autoFadeOut) {
            ++(entry.kind == BreakKind::eye ? report.eyeFadedOut : report.bodyFadedOut);
        }
    }
    for (const ReportSummaryDayBucket& bucket : view.dayBuckets(*log.entries(), range)) {
        report.days.push_back({calendar.components(bucket.day).day, bucket.eye, bucket.body});
    }
    return report;
}

}  // namespace

ControlOutcome printReport(const BreakLog& log, const PresenceTally& tally,
                           const Calendar& calendar, const NowFunction& now, std::string_view range,
                           std::string_view format) {
    const auto span = enumFrom<ReportSummaryView::Range>(range);
    if (!span) {
        return ControlOutcome::invalid({"cli.error.range %@", {std::string(range)}});
    }
    if (format == "csv") {
        return ControlOutcome::done(
            exportCsv(log.entriesOf(ReportSummaryView::days(*span)), calendar));
    }
    if (format != "json") {
        return ControlOutcome::invalid({"cli.error.format %@", {std::string(format)}});
    }
    return ControlOutcome::done(
        printJson(reportOf(log, tally, calendar, now, *span)).text.value_or(std::string()));
}

}  // namespace ostrel
