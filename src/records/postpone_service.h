#pragma once

#include <cstdint>

#include "base/clock.h"
#include "records/break_records.h"
#include "records/postpone_quota.h"

namespace ostrel {

class DailyCounter;

// The one way to postpone a break: asks the quota and counts what it grants.
class PostponeService : public PostponeRation {
  public:
    static constexpr std::int64_t kAllowance = PostponeQuota::kAllowance;  // an hour

    PostponeService(NowFunction now, PostponeQuota& quota, DailyCounter& dailyCounter);

    [[nodiscard]] std::int64_t remainingPostpones() override;
    bool tryPostpone() override;

  private:
    NowFunction now_;
    PostponeQuota& quota_;
    DailyCounter& dailyCounter_;
};

}  // namespace ostrel
