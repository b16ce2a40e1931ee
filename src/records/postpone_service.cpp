#include "records/postpone_service.h"

#include <utility>

#include "records/daily_counter.h"

namespace ostrel {

PostponeService::PostponeService(NowFunction now, PostponeQuota& quota, DailyCounter& dailyCounter)
    : now_(std::move(now)), quota_(quota), dailyCounter_(dailyCounter) {}

std::int64_t PostponeService::remainingPostpones() {
    const WallTime now = now_();
    quota_.rollIfNeeded(now);
    return quota_.remainingAt(now);
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
