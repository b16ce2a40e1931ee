#include "menubar/menu_bar_context.h"

#include "core/engine/timer_engine.h"
#include "core/settings/session_state_store.h"
#include "core/settings/settings_store.h"

namespace ostrel {

MenuBarFormatter::Context menuBarContext(const TimerEngine& engine,
                                         const SessionStateStore& session,
                                         const SettingsStore& settings) {
    const TimerState& state = *engine.state();
    return {state,
            state.eye.pendingPenaltySec,
            settings.settings()->ostrelEnabled,
            session.isPaused(),
            state.eye.isAway,
            settings.settings()->strictMode,
            engine.activeIntervalSec(BreakKind::eye),
            engine.activeIntervalSec(BreakKind::body)};
}

}  // namespace ostrel
