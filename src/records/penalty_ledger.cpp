#include "records/penalty_ledger.h"

#include <algorithm>
#include <utility>

namespace ostrel {
namespace {

bool isWithinHour(const SkipEvent& event, WallTime now) {
    return event.occurredAt >= now - wallSec(PenaltyLedger::kHorizonSec);
}

std::vector<SkipEvent> within(std::vector<SkipEvent> events, WallTime now) {
    std::erase_if(events, [now](const SkipEvent& event) { return !isWithinHour(event, now); });
    return events;
}

}  // namespace

PenaltyLedger::PenaltyLedger(PreferencesStore& preferences)
    : document_(preferences, "ostrel.penaltyLedger.v1"),
      skipEvents_(document_.load().value_or(std::vector<SkipEvent>{})) {}

void PenaltyLedger::append(BreakLogEntry::Kind kind, WallTime at, std::int64_t penaltySec) {
    std::vector<SkipEvent> next = *skipEvents_;
    next.push_back({kind, at, penaltySec});
    skipEvents_.set(within(std::move(next), at));
    document_.save(*skipEvents_);
}

std::int64_t PenaltyLedger::countWithinHour(BreakLogEntry::Kind kind, WallTime now) const {
    return std::ranges::count_if(*skipEvents_, [&](const SkipEvent& event) {
        return event.kind == kind && isWithinHour(event, now);
    });
}

void PenaltyLedger::prune(WallTime now) {
    std::vector<SkipEvent> next = within(*skipEvents_, now);
    if (next.size() != skipEvents_->size()) {
        skipEvents_.set(std::move(next));
        document_.save(*skipEvents_);
    }
}

std::int64_t PenaltyLedger::count(BreakLogEntry::Kind kind, WallTime now) {
    prune(now);
    return countWithinHour(kind, now);
}

std::int64_t PenaltyLedger::totalCount(WallTime now) {
    prune(now);
    return std::ssize(*skipEvents_);
}

void PenaltyLedger::clear() {
    skipEvents_.set({});
    document_.remove();
}

}  // namespace ostrel
