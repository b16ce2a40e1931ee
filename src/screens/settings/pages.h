#pragma once

#include "screens/controls/page.h"
#include "screens/settings/settings_services.h"

// The pages of the settings window, each with all that one can set there. The services outlive
// them.
namespace ostrel {

[[nodiscard]] Page* makeTimingPage(const SettingsServices& services);
[[nodiscard]] Page* makeBreaksPage(const SettingsServices& services);
[[nodiscard]] Page* makePresencePage(const SettingsServices& services);
[[nodiscard]] Page* makeWorkHoursPage(const SettingsServices& services);
[[nodiscard]] Page* makeRemindersPage(const SettingsServices& services);
[[nodiscard]] Page* makeShortcutsPage(const SettingsServices& services);
[[nodiscard]] Page* makeGeneralPage(const SettingsServices& services);

}  // namespace ostrel
