#include "records/postpone_service.h"

#include <algorithm>
#include <utility>

#include "base/checked_seconds.h"
#include "records/daily_counter.h"
#include "records/postpone_quota.h"

namespace ostrel {

PostponeService::PostponeService(NowFunction now, PostponeQuota& quota, DailyCounter& dailyCounter)
    : now_(std::move(now)), quota_(quota), dailyCounter_(dailyCounter) {}

std::int64_t PostponeService::remainingPostpones() {
    quota_.rollIfNeeded(now_());
    return std::max<std::int64_t>(0, subtractSec(PostponeQuota::kAllowance, *quota_.used()));
}

bool PostponeService::tryPostpone() {
    const WallTime now = now_();
    if (!quota_.canPostpone(now)) {
        return false;
    }
    quota_.consume(now);
    dailyCounter_.recordPostpone();
    return true;
}

}  // namespace ostrel
