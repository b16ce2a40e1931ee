#include "screens/report/report_data.h"

#include <algorithm>
#include <utility>

#include "base/checked_seconds.h"
#include "core/settings/settings_store.h"
#include "platform/api/calendar.h"
#include "records/break_log.h"
#include "records/daily_counter.h"
#include "records/presence_tally.h"
#include "records/streak_tracker.h"
#include "screens/report/report_services.h"

namespace ostrel {
namespace {

using Outcome = BreakLogEntry::Outcome;

// The summary counts the breaks that were completed, day by day. Asked about those that ended by
// themselves as if they had been, it counts these.
std::vector<ReportSummaryDayBucket> fadedBuckets(const ReportServices& services,
                                                 ReportSummaryView::Range range) {
    std::vector<BreakLogEntry> faded;
    for (BreakLogEntry entry : *services.breakLog.entries()) {
        if (entry.outcome == Outcome::autoFadeOut) {
            entry.outcome = Outcome::completed;
            faded.push_back(entry);
        }
    }
    return services.summary.dayBuckets(faded, range);
}

std::vector<ReportDay> daysOf(const ReportServices& services, ReportSummaryView::Range range) {
    const auto completed = services.summary.dayBuckets(*services.breakLog.entries(), range);
    const auto faded = fadedBuckets(services, range);
    std::vector<ReportDay> days;
    for (const ReportSummaryDayBucket& bucket : completed) {
        const auto same = std::ranges::find(faded, bucket.day, &ReportSummaryDayBucket::day);
        days.push_back({services.calendar.components(bucket.day).day, bucket.eye, bucket.body,
                        same == faded.end() ? 0 : addSec(same->eye, same->body)});
    }
    if (days.empty()) {
        days.push_back({services.calendar.components(services.now()).day});
    }
    return days;
}

}  // namespace

std::int64_t ReportDay::total() const {
    return addSec(addSec(eye, body), faded);
}

ReportData readReport(const ReportServices& services, ReportSummaryView::Range range) {
    const auto span = services.breakLog.entriesOf(ReportSummaryView::days(range));
    const auto all = services.breakLog.entriesOf(BreakLog::kRetentionDays);
    const auto presence = services.presenceTally.totals(ReportSummaryView::days(range));
    const DailyCounterModel& today = *services.dailyCounter.model();
    ReportData data;
    data.range = range;
    data.stats = services.summary.stats(range);
    data.fadedOut = std::ranges::count(span, Outcome::autoFadeOut, &BreakLogEntry::outcome);
    data.held = presence.held;
    data.dropped = std::ranges::count(span, Outcome::deferred, &BreakLogEntry::outcome);
    data.credited = presence.credited;
    data.content = !span.empty() || presence.held > 0 || presence.credited > 0
                       ? ReportData::Content::some
                   : all.empty() ? ReportData::Content::none
                                 : ReportData::Content::noneInRange;
    data.days = daysOf(services, range);
    data.takenToday = addSec(today.eyeBreaksCompleted, today.bodyBreaksCompleted);
    data.goal = std::max<std::int64_t>((*services.settingsStore.settings()).dailyGoalBreaks, 1);
    data.streak = *services.streakTracker.streak();
    return data;
}

}  // namespace ostrel
