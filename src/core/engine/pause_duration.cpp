#include "core/engine/pause_duration.h"

#include "base/checked_seconds.h"
#include "core/settings/settings_model.h"
#include "platform/api/calendar.h"

namespace ostrel {
namespace {

constexpr std::int64_t kMinutesPerDay = 1440;

}  // namespace

std::optional<WallTime> pauseEnd(PauseDuration duration, const SettingsModel& settings,
                                 const Calendar& calendar, WallTime now) {
    switch (duration.kind) {
        case PauseDuration::Kind::minutes:
            return now + wallSec(multiplySec(duration.minutes, 60));
        case PauseDuration::Kind::untilNextMorning: {
            std::int64_t minute = settings.workHoursEnabled ? settings.workHoursStartMinute
                                                            : WorkHoursDefaults::kStartMinute;
            // A document edited by hand may hold a minute that no day has.
            if (minute < 0 || minute >= kMinutesPerDay) {
                minute = WorkHoursDefaults::kStartMinute;
            }
            return calendar.nextMatching(now, static_cast<int>(minute / 60),
                                         static_cast<int>(minute % 60));
        }
        case PauseDuration::Kind::indefinite:
            break;
    }
    return std::nullopt;
}

}  // namespace ostrel
