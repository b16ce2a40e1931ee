#pragma once

#include <cstdint>
#include <tuple>
#include <vector>

#include "base/clock.h"
#include "base/published.h"
#include "core/settings/document.h"
#include "records/break_log_entry.h"

namespace ostrel {

struct SkipEvent {
    BreakLogEntry::Kind kind = BreakLogEntry::Kind::eye;
    WallTime occurredAt;
    std::int64_t appliedPenaltySec = 0;

    static constexpr auto fields() {
        return std::tuple{Field{"kind", &SkipEvent::kind},
                          Field{"occurredAt", &SkipEvent::occurredAt},
                          Field{"appliedPenaltySec", &SkipEvent::appliedPenaltySec}};
    }

    bool operator==(const SkipEvent&) const = default;
};

// The skips of the last hour, oldest first, kept under "ostrel.penaltyLedger.v1".
class PenaltyLedger {
  public:
    static constexpr std::int64_t kHorizonSec = 3600;

    explicit PenaltyLedger(PreferencesStore& preferences);

    [[nodiscard]] const Published<std::vector<SkipEvent>>& skipEvents() const {
        return skipEvents_;
    }

    void append(BreakLogEntry::Kind kind, WallTime at, std::int64_t penaltySec);

    // Changes nothing.
    [[nodiscard]] std::int64_t countWithinHour(BreakLogEntry::Kind kind, WallTime now) const;

    // Forgets what is older than the horizon; the two below do so first.
    void prune(WallTime now);
    [[nodiscard]] std::int64_t count(BreakLogEntry::Kind kind, WallTime now);
    [[nodiscard]] std::int64_t totalCount(WallTime now);

    // Also removes what is stored.
    void clear();

  private:
    Document<std::vector<SkipEvent>> document_;
    Published<std::vector<SkipEvent>> skipEvents_;
};

}  // namespace ostrel
