#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "app/control/control_outcome.h"
#include "app/control/control_status.h"
#include "app/control/setting_values.h"
#include "app/environment/platform.h"
#include "base/clock.h"
#include "base/subscription.h"

namespace ostrel {

class AppEnvironment;
class Calendar;

// What other programs of the same user can ask of the running one. Each answers at once; arguments
// are texts as they come from outside.
class Control {
  public:
    // What it works with. All of it outlives it.
    struct Services {
        AppEnvironment& environment;
        const Calendar& calendar;
        NowFunction now;
        SettingValues::Languages languages;
        std::function<void(AppWindow)> openWindow;
    };

    explicit Control(Services services);

    [[nodiscard]] ControlStatus status() const;
    // The same as one line of JSON.
    [[nodiscard]] std::string printStatus() const;

    // See parsePause(). Refused while the breaks are switched off.
    ControlOutcome pause(std::string_view duration);
    // Ends every pause; without one there is nothing to do.
    ControlOutcome resume();
    ControlOutcome startBreak(std::string_view kind);
    // The break on the screen, as its button would.
    ControlOutcome skip();
    // Likewise; without one the break that comes next.
    ControlOutcome postpone();

    // See printReport().
    [[nodiscard]] ControlOutcome report(std::string_view range, std::string_view format) const;

    [[nodiscard]] std::string settings() const;
    // See SettingValues::change(). The countdowns follow.
    ControlOutcome setSetting(std::string_view name, const std::string& value);
    // A whole document. The countdowns follow.
    ControlOutcome importSettings(std::string_view document);

    // A window by the name of its AppWindow.
    ControlOutcome open(std::string_view window);

    // Whenever the status may be another.
    [[nodiscard]] std::vector<Subscription> onChange(const std::function<void()>& changed) const;

  private:
    ControlOutcome apply(const SettingsModel& settings);

    [[nodiscard]] BreakKind nextKind() const;

    Services services_;
};

}  // namespace ostrel
