#include "records/daily_counter.h"

#include <algorithm>
#include <utility>

#include "base/checked_seconds.h"
#include "platform/api/calendar.h"
#include "platform/api/system_events.h"

namespace ostrel {

DailyCounter::DailyCounter(Services services)
    : services_(std::move(services)),
      document_(services_.preferences, "ostrel.dailyCounter.v1"),
      model_(document_.load().value_or(today())) {
    rollOverIfNeeded();
    armMidnightTimer();
    const auto afterClockOrDayChange = [this] {
        rollOverIfNeeded();
        armMidnightTimer();
    };
    const SystemEvents& events = services_.systemEvents;
    observers_.push_back(events.didBecomeActive.subscribe([this] { rollOverIfNeeded(); }));
    observers_.push_back(events.clockChanged.subscribe(afterClockOrDayChange));
    observers_.push_back(events.dayChanged.subscribe(afterClockOrDayChange));
}

DailyCounter::~DailyCounter() = default;

DailyCounterModel DailyCounter::today() const {
    DailyCounterModel model;
    model.dateKey = services_.calendar.dayKeyOf(services_.now());
    return model;
}

bool DailyCounter::rollOverIfNeeded() {
    DailyCounterModel fresh = today();
    if (fresh.dateKey == model_->dateKey) {
        return false;
    }
    model_.set(std::move(fresh));
    document_.save(*model_);
    return true;
}

// A break may end after midnight and before the timer has fired.
void DailyCounter::increment(std::int64_t DailyCounterModel::*count) {
    rollOverIfNeeded();
    DailyCounterModel next = *model_;
    next.*count = addSec(next.*count, 1);
    model_.set(std::move(next));
    document_.save(*model_);
}

void DailyCounter::recordEyeCompleted() {
    increment(&DailyCounterModel::eyeBreaksCompleted);
}
void DailyCounter::recordBodyCompleted() {
    increment(&DailyCounterModel::bodyBreaksCompleted);
}
void DailyCounter::recordSkip() {
    increment(&DailyCounterModel::skipsToday);
}
void DailyCounter::recordPostpone() {
    increment(&DailyCounterModel::postponesToday);
}

void DailyCounter::armMidnightTimer() {
    midnightTimer_.cancel();
    const WallTime now = services_.now();
    if (const auto midnight = services_.calendar.nextMatching(now, 0, 0)) {
        const WallTime due = std::max(*midnight, now + wallSec(1));
        midnightTimer_ = services_.runLoop.callAt(due, [this] {
            rollOverIfNeeded();
            armMidnightTimer();
        });
    }
}

}  // namespace ostrel
