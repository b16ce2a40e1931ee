#pragma once

#include <string>
#include <vector>

#include "base/clock.h"
#include "platform/api/calendar.h"
#include "records/break_log_entry.h"
#include "records/daily_counter.h"

namespace ostrel {

// What the history has to say of each break, and the counts of a day that follow from it.
class RecordsModel {
  public:
    enum class Counted { yes, no };

    explicit RecordsModel(const Calendar& calendar) : calendar_(calendar) {}

    [[nodiscard]] const std::vector<BreakLogEntry>& entries() const { return entries_; }

    void add(const BreakLogEntry& entry, Counted counted = Counted::yes) {
        entries_.push_back(entry);
        days_.push_back(calendar_.dayKeyOf(entry.endedAt));
        counted_.push_back(counted);
    }

    [[nodiscard]] DailyCounterModel countsOf(const std::string& day) const {
        DailyCounterModel counts;
        counts.dateKey = day;
        for (std::size_t i = 0; i < entries_.size(); ++i) {
            const BreakLogEntry& entry = entries_[i];
            if (days_[i] != day || counted_[i] == Counted::no) {
                continue;
            }
            const bool isEye = entry.kind == BreakKind::eye;
            counts.eyeBreaksCompleted += entry.isTaken() && isEye ? 1 : 0;
            counts.bodyBreaksCompleted += entry.isTaken() && !isEye ? 1 : 0;
            counts.skipsToday += entry.outcome == BreakLogEntry::Outcome::skipped ? 1 : 0;
            counts.postponesToday += entry.outcome == BreakLogEntry::Outcome::postponed ? 1 : 0;
        }
        return counts;
    }

  private:
    const Calendar& calendar_;
    std::vector<BreakLogEntry> entries_;
    std::vector<std::string> days_;
    std::vector<Counted> counted_;
};

}  // namespace ostrel
