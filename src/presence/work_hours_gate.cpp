#include "presence/work_hours_gate.h"

#include <algorithm>
#include <utility>

#include "core/engine/timer_engine.h"
#include "core/settings/settings_store.h"
#include "platform/api/calendar.h"
#include "platform/api/system_events.h"

namespace ostrel {

WorkHoursGate::WorkHoursGate(Services services, Start start) : services_(std::move(services)) {
    if (start == Start::immediately) {
        this->start();
    }
}

WorkHoursGate::~WorkHoursGate() = default;

void WorkHoursGate::start() {
    const SystemEvents& events = services_.systemEvents;
    for (const Signal<>* event :
         {&events.dayChanged, &events.clockChanged, &events.didWake, &events.didBecomeActive}) {
        observers_.push_back(event->subscribe([this] { evaluate(); }));
    }
    shape_ = WindowShape::of(*services_.settingsStore.settings());
    observers_.push_back(
        services_.settingsStore.settings().onChange([this](const SettingsModel& settings) {
            WindowShape shape = WindowShape::of(settings);
            if (shape != shape_) {
                shape_ = std::move(shape);
                evaluate(WindowShape(shape_));
            }
        }));
    evaluate();
}

void WorkHoursGate::evaluate() {
    evaluate(WindowShape::of(*services_.settingsStore.settings()));
}

void WorkHoursGate::evaluate(const WindowShape& shape) {
    const WallTime now = services_.now();
    const bool isInside = isWithin(now, shape, services_.calendar);
    const bool endsDay = isDayEnd(shape, isInside, now);
    const auto boundary = nextBoundary(now, shape, services_.calendar);
    hasEvaluated_ = true;
    if (isInside) {
        insideUntil_ = boundary;
    }
    act(isInside);
    armBoundaryTimer(now, boundary);
    if (endsDay) {
        dayEnded.send();
    }
}

bool WorkHoursGate::isDayEnd(const WindowShape& shape, bool isInside, WallTime now) const {
    const bool isLeaving = hasEvaluated_ && *isWithinWorkHours_ && !isInside;
    return isLeaving && shape.workHoursEnabled && insideUntil_ &&
           *insideUntil_ - now <= wallSec(kDayEndSlackSec);
}

void WorkHoursGate::act(bool isInside) {
    using Countdowns = TimerEngine::Countdowns;
    const bool hasChanged = isInside != *isWithinWorkHours_;
    isWithinWorkHours_.set(isInside);
    if (!services_.timerEngine) {
        return;
    }
    if (isInside) {
        services_.timerEngine->endPause(PauseReason::schedule,
                                        hasChanged ? Countdowns::restart : Countdowns::keep);
    } else {
        services_.timerEngine->pause(PauseReason::schedule);
    }
}

// Where the answer does not change for long, the next midnight is soon enough.
void WorkHoursGate::armBoundaryTimer(WallTime now, std::optional<WallTime> boundary) {
    constexpr std::int64_t kLeastDelaySec = 1;
    constexpr WallClock::duration kDay = std::chrono::hours(24);
    const WallTime next =
        boundary.value_or(services_.calendar.nextMatching(now, 0, 0).value_or(now + kDay));
    boundaryTimer_ = services_.runLoop.callAt(std::max(next, now + wallSec(kLeastDelaySec)),
                                              [this] { evaluate(); });
}

}  // namespace ostrel
