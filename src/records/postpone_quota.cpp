#include "records/postpone_quota.h"

#include <algorithm>

#include "base/checked_seconds.h"

namespace ostrel {

PostponeQuota::PostponeQuota(PreferencesStore& preferences, const NowFunction& now)
    : document_(preferences, "ostrel.postponeQuota.v1") {
    const Stored stored = document_.load().value_or(Stored{0, now()});
    windowStart_.set(stored.windowStart);
    used_.set(stored.used);
}

bool PostponeQuota::isOver(WallTime now) const {
    return now >= *windowStart_ + wallSec(kSpanSec);
}

// A count below nothing can only come from a document that somebody edited.
std::int64_t PostponeQuota::remainingAt(WallTime now) const {
    constexpr std::int64_t kLeast = -1'000'000;
    const std::int64_t used = isOver(now) ? 0 : std::max(*used_, kLeast);
    return std::max<std::int64_t>(kAllowance - used, 0);
}

void PostponeQuota::rollIfNeeded(WallTime now) {
    if (isOver(now)) {
        windowStart_.set(now);
        used_.set(0);
        save();
    }
}

bool PostponeQuota::canPostpone(WallTime now) {
    rollIfNeeded(now);
    return *used_ < kAllowance;
}

void PostponeQuota::consume(WallTime now) {
    rollIfNeeded(now);
    used_.set(addSec(*used_, 1));
    save();
}

void PostponeQuota::save() {
    document_.save({*used_, *windowStart_});
}

}  // namespace ostrel
