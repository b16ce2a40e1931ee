#include "records/postpone_quota.h"

#include "base/checked_seconds.h"

namespace ostrel {

PostponeQuota::PostponeQuota(PreferencesStore& preferences, const NowFunction& now)
    : document_(preferences, "ostrel.postponeQuota.v1") {
    const Stored stored = document_.load().value_or(Stored{0, now()});
    windowStart_.set(stored.windowStart);
    used_.set(stored.used);
}

void PostponeQuota::rollIfNeeded(WallTime now) {
    if (now >= *windowStart_ + wallSec(kSpanSec)) {
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
