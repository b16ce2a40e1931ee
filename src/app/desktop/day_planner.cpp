#include "app/desktop/day_planner.h"

#include <chrono>

#include "app/environment/app_environment.h"
#include "app/simulator/virtual_platform.h"
#include "base/uuid.h"
#include "platform/calendar/local_time.h"

namespace ostrel {
namespace {

constexpr std::int64_t kDaySec = 28'800;

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
    plan.lengthSec = kDaySec;
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
    platform.runLoop.runUpTo(start + std::chrono::seconds(kDaySec));
    return plan;
}

}  // namespace ostrel
