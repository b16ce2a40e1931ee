#include "records/day_end_announcer.h"

#include <optional>
#include <utility>

#include "core/settings/settings_store.h"
#include "platform/api/calendar.h"
#include "records/break_log.h"

namespace ostrel {
namespace {

constexpr std::int64_t kMinutesPerHour = 60;
constexpr std::int64_t kMinutesPerDay = 1440;

// Breaks that end in [from, to) belong to the day.
struct WorkDay {
    WallTime from;
    WallTime to;
};

std::optional<WorkDay> workDayThatEnded(const SettingsModel& settings, const Calendar& calendar,
                                        WallTime now) {
    const Calendar::Components local = calendar.components(now);
    std::int64_t start = settings.workHoursStartMinute;
    // A document edited by hand may hold a minute that no day has.
    if (start < 0 || start >= kMinutesPerDay) {
        start = WorkHoursDefaults::kStartMinute;
    }
    const bool beganToday = local.hour * kMinutesPerHour + local.minute >= start;
    const auto onDay = beganToday ? now : calendar.addDays(calendar.startOfDay(now), -1);
    if (!onDay) {
        return std::nullopt;
    }
    const WallTime midnight = calendar.startOfDay(*onDay);
    if (start > settings.workHoursEndMinute) {
        const auto began =
            calendar.nextMatching(midnight - wallSec(1), static_cast<int>(start / kMinutesPerHour),
                                  static_cast<int>(start % kMinutesPerHour));
        return began ? std::optional(WorkDay{*began, now}) : std::nullopt;
    }
    const auto onNextDay = calendar.addDays(midnight, 1);
    return onNextDay ? std::optional(WorkDay{midnight, calendar.startOfDay(*onNextDay)})
                     : std::nullopt;
}

}  // namespace

DayEndAnnouncer::DayEndAnnouncer(Services services)
    : services_(std::move(services)),
      document_(services_.preferences, "ostrel.dayEnd.v1"),
      announced_(document_.load().value_or(Marker{})) {}

void DayEndAnnouncer::dayEnded() {
    const SettingsModel& settings = *services_.settingsStore.settings();
    if (!settings.notifyDayEnd || !services_.notificationCenter) {
        return;
    }
    const auto day = workDayThatEnded(settings, services_.calendar, services_.now());
    if (!day || !settings.workDays.contains(services_.calendar.components(day->from).weekday)) {
        return;
    }
    std::string key = services_.calendar.dayKeyOf(day->from);
    if (key == announced_.dateKey) {
        return;
    }
    announced_.dateKey = std::move(key);
    document_.save(announced_);
    services_.notificationCenter->postDayEnd(
        services_.breakLog.takenBetween(day->from, day->to).count, settings.dailyGoalBreaks);
}

}  // namespace ostrel
