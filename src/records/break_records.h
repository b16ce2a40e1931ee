#pragma once

#include <cstdint>

#include "base/published.h"
#include "records/break_log_entry.h"

// What the engine and the overlay ask of the records. Each of these may be absent: then nothing is
// recorded, no skip costs anything, and no break can be postponed.
namespace ostrel {

class BreakLogging {
  public:
    virtual ~BreakLogging() = default;
    virtual void append(const BreakLogEntry& entry) = 0;
};

class DailyCounting {
  public:
    virtual ~DailyCounting() = default;
    virtual void recordEyeCompleted() = 0;
    virtual void recordBodyCompleted() = 0;
    virtual void recordSkip() = 0;
};

// What skips cost. The pool is the one truth about the seconds that the next eye break carries.
class SkipPenalties {
  public:
    virtual ~SkipPenalties() = default;
    [[nodiscard]] virtual const Published<std::int64_t>& unconsumedPenaltySec() const = 0;
    // Empties the pool and returns what was in it.
    virtual std::int64_t consumePenalty() = 0;
    virtual void clearPenalty() = 0;
    virtual void expireIfStale() = 0;
    // What skipping such a break now would cost.
    [[nodiscard]] virtual std::int64_t previewPenalty(BreakLogEntry::Kind kind) = 0;
    // Charges for a skip; returns what it cost.
    virtual std::int64_t registerSkip(BreakLogEntry::Kind kind) = 0;
    [[nodiscard]] virtual std::int64_t recentSkipCount() const = 0;
};

class PostponeRation {
  public:
    static constexpr std::int64_t kPostponeSec = 300;

    virtual ~PostponeRation() = default;
    // Asking may begin a new span.
    [[nodiscard]] virtual std::int64_t remainingPostpones() = 0;
    // Uses up one postpone and counts it; false, and nothing used, when none is left.
    virtual bool tryPostpone() = 0;
};

}  // namespace ostrel
