#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "base/clock.h"
#include "base/published.h"
#include "base/signal.h"
#include "core/settings/list_document.h"
#include "records/break_log_entry.h"
#include "records/break_records.h"

namespace ostrel {

class Calendar;

// Figures of a stretch of days.
struct AggregatedTotals {
    std::int64_t eye = 0;            // breaks completed
    std::int64_t body = 0;           // likewise
    double skipRate = 0;             // 0 to 1
    std::int64_t avgPenaltySec = 0;  // over the entries that carried one, rounded

    bool operator==(const AggregatedTotals&) const = default;
};

// The history of breaks: what became of each one that fell due, in the order of recording, kept
// under "ostrel.breakLog.v1" for kRetentionDays days.
//
// Days are the user's calendar days, in the zone of the moment. A history that cannot be encoded is
// not written and not complained of.
class BreakLog : public BreakLogging {
  public:
    static constexpr std::int64_t kRetentionDays = 60;

    // All of these outlive the log.
    BreakLog(PreferencesStore& preferences, const Calendar& calendar, NowFunction now);

    [[nodiscard]] const Published<std::vector<BreakLogEntry>>& entries() const { return entries_; }

    // Records one break, drops what is older than kRetentionDays, publishes and saves.
    void append(const BreakLogEntry& entry) override;

    // Today and the `lastDays` - 1 days before, and whatever ended in the future.
    [[nodiscard]] AggregatedTotals totals(std::int64_t lastDays) const;
    [[nodiscard]] std::vector<BreakLogEntry> entriesOf(std::int64_t lastDays) const;

    // Whole calendar days since the entry ended: 0 today, negative in the future.
    [[nodiscard]] std::int64_t dayAge(const BreakLogEntry& entry) const;

    // How many breaks that were taken ended in [from, to).
    [[nodiscard]] std::int64_t takenBetween(WallTime from, WallTime to) const;

    // For those who only tell what happens: comes after the new list.
    Signal<const BreakLogEntry&> didAppend;

  private:
    [[nodiscard]] std::optional<WallTime> startOfDayBefore(std::int64_t days) const;

    const Calendar& calendar_;
    NowFunction now_;
    ListDocument<BreakLogEntry> document_;
    Published<std::vector<BreakLogEntry>> entries_;
    std::uint64_t appends_ = 0;
    std::uint64_t savedAppends_ = 0;
};

}  // namespace ostrel
