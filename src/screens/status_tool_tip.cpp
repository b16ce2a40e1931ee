#include "screens/status_tool_tip.h"

#include <cstdint>

#include "base/checked_seconds.h"
#include "core/engine/timer_engine.h"
#include "core/settings/settings_store.h"
#include "menubar/menu_bar_formatter.h"
#include "screens/countdown_label.h"
#include "screens/status_icon.h"
#include "screens/texts/texts.h"

namespace ostrel {
namespace {

constexpr std::int64_t kMinute = 60;

// Seconds until the tooltip's nearest time next changes; all its times change then, and no other
// time does.
std::int64_t untilChange(std::int64_t nearestSec) {
    return nearestSec > kMinute ? StatusIcon::wholeMinutesUp(nearestSec) - nearestSec : 0;
}

QString roughCountdown(std::int64_t seconds, std::int64_t untilChangeSec) {
    if (seconds <= kMinute) {
        return countdownLabel(seconds);
    }
    const std::int64_t atChange = addSec(seconds, untilChangeSec);
    return countdownLabel((atChange + kMinute / 2) / kMinute * kMinute);
}

}  // namespace

QString statusToolTip(const StatusMenu::Services& services) {
    if (!services.settingsStore.settings()->ostrelEnabled) {
        return Texts::of("menubar.tooltip.off");
    }
    if (const QString held = StatusMenu::stateText(services); !held.isEmpty()) {
        return Texts::of("menubar.tooltip.on") + QLatin1Char('\n') + held;
    }
    const TimerState& state = *services.timerEngine.state();
    const std::int64_t wait = untilChange(MenuBarFormatter::nearestChannel(state).remainingSec);
    const QStringList lines{
        Texts::of("menubar.tooltip.default"),
        Texts::of("menubar.status.next_eye %@", {roughCountdown(state.eye.remainingSec, wait)}),
        Texts::of("menubar.status.next_body %@", {roughCountdown(state.body.remainingSec, wait)}),
    };
    return lines.join(QLatin1Char('\n'));
}

}  // namespace ostrel
