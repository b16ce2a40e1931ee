#include "menubar/menu_bar_session.h"

namespace ostrel {
namespace {

using CardMode = MenuBarSessionDerivedState::CardMode;
using TimeOfDay = MenuBarSessionDerivedState::TimeOfDay;

CardMode cardModeOf(const MenuBarFormatter::Context& context) {
    using MenuBarFormatter::Status;
    switch (MenuBarFormatter::format(context).status) {
        case Status::off:
            return CardMode::disabled;
        case Status::paused:
            return CardMode::paused;
        case Status::away:
            return CardMode::away;
        case Status::running:
            break;
    }
    return CardMode::running;
}

// The user's own pause is the one to tell of: it is what "resume" is about.
LocalizedText describePause(const SessionStateModel& session, const TimeOfDay& timeOfDay) {
    if (!session.isPaused) {
        return {};
    }
    if (session.pauseReasons.contains(PauseReason::user)) {
        return session.userPauseUntil
                   ? LocalizedText{"menubar.pause.until %@", {timeOfDay(*session.userPauseUntil)}}
                   : LocalizedText{"menubar.pause.indefinite_state", {}};
    }
    const bool isFocus = session.pauseReasons.contains(PauseReason::focus);
    return {isFocus ? "menubar.pause.focus" : "menubar.pause.schedule", {}};
}

LocalizedText statusOf(const MenuBarSession& session, CardMode mode, const TimeOfDay& timeOfDay) {
    if (session.isOnScreen) {
        return {"menubar.status.on_screen", {}};
    }
    if (mode == CardMode::disabled) {
        return {"menubar.status.disabled", {}};
    }
    if (mode == CardMode::paused) {
        const bool isOffWork = session.session.pauseReasons == std::set{PauseReason::schedule};
        return {isOffWork ? "menubar.status.off" : "state.paused", {}};
    }
    if (session.isHeld) {
        return {"menubar.status.held", {}};
    }
    if (mode == CardMode::away) {
        return {"menubar.status.away", {}};
    }
    if (session.context.strictMode) {
        return {"menubar.status.strict_active", {}};
    }
    return session.workUntil
               ? LocalizedText{"menubar.status.on_until %@", {timeOfDay(*session.workUntil)}}
               : LocalizedText{"menubar.tooltip.on", {}};
}

bool isEmpty(const DailyCounterModel& day) {
    return day.eyeBreaksCompleted == 0 && day.bodyBreaksCompleted == 0 && day.skipsToday == 0 &&
           day.postponesToday == 0;
}

}  // namespace

MenuBarSessionDerivedState derive(const MenuBarSession& session, const TimeOfDay& timeOfDay) {
    const CardMode mode = cardModeOf(session.context);
    return {session.context.isPaused,
            session.context.isAway,
            isEmpty(session.today),
            describePause(session.session, timeOfDay),
            session.session.pauseReasons.contains(PauseReason::user),
            mode,
            MenuBarFormatter::nearestChannel(session.context.state).kind,
            session.eyeJoinsBody,
            statusOf(session, mode, timeOfDay)};
}

}  // namespace ostrel
