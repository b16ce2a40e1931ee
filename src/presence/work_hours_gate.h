#pragma once

#include <optional>
#include <vector>

#include "base/clock.h"
#include "base/published.h"
#include "base/signal.h"
#include "base/subscription.h"
#include "platform/api/run_loop.h"
#include "presence/work_hours.h"

namespace ostrel {

class Calendar;
class SettingsStore;
class SystemEvents;
class TimerEngine;

// Keeps breaks inside the user's working hours: outside of them it pauses the schedule.
//
// It looks again at the next moment that can make a difference, when the clock, the day or the zone
// may have changed, when the user turns to the program, and when the hours are edited. It does not
// poll.
class WorkHoursGate {
  public:
    // The end of the day is announced so close to the end of the hours, but not when the clock or
    // the hours moved by more.
    static constexpr std::int64_t kDayEndSlackSec = 3600;

    // What the gate works with. All of it outlives the gate.
    struct Services {
        const SettingsStore& settingsStore;
        const Calendar& calendar;
        const SystemEvents& systemEvents;
        RunLoop& runLoop;
        NowFunction now;
        TimerEngine* timerEngine = nullptr;  // may be absent
    };

    enum class Start { immediately, later };

    WorkHoursGate(Services services, Start start);
    WorkHoursGate(const WorkHoursGate&) = delete;
    WorkHoursGate& operator=(const WorkHoursGate&) = delete;
    ~WorkHoursGate();

    [[nodiscard]] const Published<bool>& isWithinWorkHours() const { return isWithinWorkHours_; }

    // The end of the present work hours; absent outside of them and where there are none.
    [[nodiscard]] std::optional<WallTime> workUntil() const {
        return *isWithinWorkHours_ ? insideUntil_ : std::nullopt;
    }

    void start();

    // By the present settings.
    void evaluate();

    // The working day is over.
    Signal<> dayEnded;

  private:
    void evaluate(const WindowShape& shape);
    [[nodiscard]] bool isDayEnd(const WindowShape& shape, bool isInside, WallTime now) const;
    void act(bool isInside);
    void armBoundaryTimer(WallTime now, std::optional<WallTime> boundary);

    Services services_;
    Published<bool> isWithinWorkHours_{true};
    std::optional<WallTime> insideUntil_;
    bool hasEvaluated_ = false;
    WindowShape shape_;  // as last seen in the settings
    Timer boundaryTimer_;
    std::vector<Subscription> observers_;
};

}  // namespace ostrel
