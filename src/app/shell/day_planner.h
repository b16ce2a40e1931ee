#pragma once

#include "core/settings/settings_model.h"
#include "screens/settings/day_plan.h"

namespace ostrel {

// An eight-hour day with these settings, played on the virtual platform: nobody is away, calls or
// pauses. It begins with the work hours, or at nine.
[[nodiscard]] DayPlan planDay(const SettingsModel& settings);

}  // namespace ostrel
