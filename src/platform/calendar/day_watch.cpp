#include "platform/calendar/day_watch.h"

#include <utility>

#include "platform/api/calendar.h"
#include "platform/api/system_events.h"

namespace ostrel {

DayWatch::DayWatch(SystemEvents& events, const Calendar& calendar, RunLoop& runLoop,
                   NowFunction now)
    : events_(events),
      calendar_(calendar),
      runLoop_(runLoop),
      now_(std::move(now)),
      clockChanges_(events.clockChanged.subscribe([this] { awaitMidnight(); })) {
    awaitMidnight();
}

void DayWatch::awaitMidnight() {
    midnightTimer_.cancel();
    if (const auto midnight = calendar_.nextMatching(now_(), 0, 0)) {
        midnightTimer_ = runLoop_.callAt(*midnight, [this] {
            awaitMidnight();
            events_.dayChanged.send();
        });
    }
}

}  // namespace ostrel
