#include "app/shell/day_planner.h"

#include <chrono>

#include "app/environment/app_environment.h"
#include "app/simulator/virtual_platform.h"
#include "base/uuid.h"
#include "platform/calendar/local_time.h"

namespace ostrel {
namespace {

constexpr std::int64_t kUsualDaySec = 28'800;
constexpr std::int64_t kMinuteSec = 60;
constexpr std::int64_t kMinutesADay = 1440;

std::int64_t lengthOf(const SettingsModel& settings) {
    if (!settings.workHoursEnabled) {
        return kUsualDaySec;
    }
    const std::int64_t minutes =
        (settings.workHoursEndMinute - settings.workHoursStartMinute + kMinutesADay) % kMinutesADay;
    return (minutes > 0 ? minutes : kMinutesADay) * kMinuteSec;
}

SettingsModel undisturbed(SettingsModel settings) {
    settings.ostrelEnabled = true;
    settings.workHoursEnabled = false;
    settings.detectUserIdle = false;
    return settings;
}

}  // namespace

DayPlan planDay(const SettingsModel& settings) {
    DayPlan plan;
    plan.startMinute =
        settings.workHoursEnabled ? settings.workHoursStartMinute : WorkHoursDefaults::kStartMinute;
    plan.lengthSec = lengthOf(settings);
    VirtualPlatform platform("UTC", wallTimeOf({{2026, 1, 5}, 9, 0, 0}, "UTC"));
    platform.preferences.write(SettingsStore::kKey, *printJson(undisturbed(settings)).text);
    AppEnvironment environment(platform.platform(seededUuids(1)));
    OverlayManager& overlay = environment.overlayManager();
    const RunLoopTime start = platform.runLoop.now();
    const Subscription breaks = overlay.didPresent.subscribe([&] {
        const ActiveOverlaySession& session = **overlay.activeSession();
        const auto at =
            std::chrono::duration_cast<std::chrono::seconds>(platform.runLoop.now() - start);
        plan.breaks.push_back({session.kind, at.count(), session.totalSec()});
    });
    environment.launch();
    platform.runLoop.runUpTo(start + std::chrono::seconds(plan.lengthSec));
    return plan;
}

}  // namespace ostrel
