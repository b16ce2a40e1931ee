#include "records/penalty_engine.h"

#include <algorithm>
#include <utility>

#include "base/checked_seconds.h"
#include "core/settings/settings_store.h"
#include "records/daily_counter.h"
#include "records/penalty_ledger.h"

namespace ostrel {

PenaltyEngine::PenaltyEngine(Services services)
    : services_(std::move(services)),
      document_(services_.preferences, "ostrel.penaltyPool.v1"),
      wasDisabled_(isDisabled()) {
    if (wasDisabled_) {
        resetAll();
    } else {
        unconsumedPenaltySec_.set(loadPool());
    }
    settingsChanges_ =
        services_.settingsStore.settings().onChange([this](const SettingsModel& settings) {
            if (!std::exchange(wasDisabled_, settings.disableSkipPenalty) &&
                settings.disableSkipPenalty) {
                resetAll();
            }
        });
}

PenaltyEngine::~PenaltyEngine() = default;

bool PenaltyEngine::isDisabled() const {
    return services_.settingsStore.settings()->disableSkipPenalty;
}

// A pool from the future was saved before the clock was set back: nobody knows how old it is.
std::int64_t PenaltyEngine::loadPool() {
    const std::optional<StoredPool> stored = document_.load();
    const WallTime now = services_.now();
    if (!stored || stored->savedAt > now ||
        now - stored->savedAt > wallSec(PenaltyLedger::kHorizonSec)) {
        return 0;
    }
    return std::max<std::int64_t>(stored->seconds, 0);
}

void PenaltyEngine::setPool(std::int64_t seconds) {
    unconsumedPenaltySec_.set(seconds);
    document_.save({*unconsumedPenaltySec_, services_.now()});
}

// Eye skips alone make a skip dearer, also one of a body break.
std::int64_t PenaltyEngine::penaltyAt(WallTime now) {
    switch (services_.ledger.count(BreakKind::eye, now)) {
        case 0:
            return kFirstPenaltySec;
        case 1:
            return kSecondPenaltySec;
        default:
            return kFurtherPenaltySec;
    }
}

std::int64_t PenaltyEngine::registerSkip(BreakKind kind) {
    if (isDisabled()) {
        return 0;
    }
    const WallTime now = services_.now();
    const std::int64_t penaltySec = penaltyAt(now);
    services_.ledger.append(kind, now, penaltySec);
    services_.dailyCounter.recordSkip();
    if (kind == BreakKind::eye) {
        setPool(addSec(*unconsumedPenaltySec_, penaltySec));
    }
    announceSkipStreak(now);
    return penaltySec;
}

void PenaltyEngine::announceSkipStreak(WallTime now) {
    if (!services_.settingsStore.settings()->notifyConsecutiveSkips) {
        return;
    }
    const std::int64_t count = services_.ledger.totalCount(now);
    if (count < kSkipStreak) {
        return;
    }
    if (services_.notificationCenter) {
        services_.notificationCenter->postSkipStreak(count);
    }
    if (services_.requestUserAttention) {
        services_.requestUserAttention();
    }
}

std::int64_t PenaltyEngine::previewPenalty(BreakKind kind) {
    return kind == BreakKind::eye && !isDisabled() ? penaltyAt(services_.now()) : 0;
}

std::int64_t PenaltyEngine::consumePenalty() {
    const std::int64_t taken = *unconsumedPenaltySec_;
    setPool(0);
    return taken;
}

std::int64_t PenaltyEngine::pendingPenaltySec() {
    services_.ledger.prune(services_.now());
    return *unconsumedPenaltySec_;
}

std::int64_t PenaltyEngine::recentSkipCount() const {
    return services_.ledger.countWithinHour(BreakKind::body, services_.now());
}

void PenaltyEngine::clearPenalty() {
    setPool(0);
}

void PenaltyEngine::expireIfStale() {
    if (services_.ledger.count(BreakKind::eye, services_.now()) == 0 &&
        *unconsumedPenaltySec_ > 0) {
        setPool(0);
    }
}

void PenaltyEngine::resetAll() {
    services_.ledger.clear();
    unconsumedPenaltySec_.set(0);
    document_.remove();
}

}  // namespace ostrel
