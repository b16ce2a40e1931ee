#pragma once

#include <optional>
#include <vector>

#include "app/simulator/scenario.h"
#include "app/simulator/scenario_reader.h"

// Reads what a scenario says of the computer and of who sits at it.
namespace ostrel::ScenarioPresence {

[[nodiscard]] ScenarioDisplays displays(ScenarioReader& in, const Json& json);
[[nodiscard]] std::optional<FrontmostApplication::Application> frontmost(ScenarioReader& in,
                                                                         const Json& json);
[[nodiscard]] std::vector<ScreenWindows::Window> windows(ScenarioReader& in, const Json& json);
[[nodiscard]] PowerAssertions::ByProcess assertions(ScenarioReader& in, const Json& json);
[[nodiscard]] DistributedAnnouncements::Announcement announcement(ScenarioReader& in,
                                                                  const Json& json);
[[nodiscard]] HotkeyChord chord(ScenarioReader& in, const Json& json);

}  // namespace ostrel::ScenarioPresence
