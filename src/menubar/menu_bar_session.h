#pragma once

#include <array>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "base/localized_text.h"
#include "core/settings/session_state_store.h"
#include "menubar/menu_bar_formatter.h"
#include "records/daily_counter.h"

namespace ostrel {

// What the dropdown is derived from.
struct MenuBarSession {
    MenuBarFormatter::Context context;
    SessionStateModel session;
    DailyCounterModel today;
    bool eyeJoinsBody = false;
    bool isHeld = false;                // a due break waits
    bool isOnScreen = false;            // a break is presented
    std::optional<WallTime> workUntil;  // the end of the work hours that the user is in
};

// The dropdown's view of the session.
struct MenuBarSessionDerivedState {
    // Which card tells of the next break.
    enum class CardMode { paused, running, away, disabled };
    // How an instant of today or tomorrow is written for people.
    using TimeOfDay = std::function<std::string(WallTime)>;

    bool isPaused = false;
    bool isAway = false;
    bool emptyState = false;         // nothing became of any break today
    LocalizedText pauseDescription;  // why, or how long; without a key while not paused
    bool isUserPaused = false;
    CardMode cardMode = CardMode::running;
    MenuBarFormatter::Channel nextKind = MenuBarFormatter::Channel::eye;
    bool eyeJoinsBody = false;  // the next eye break will be merged into the body break
    LocalizedText statusLine;
};
constexpr std::array<std::string_view, 4> enumNames(MenuBarSessionDerivedState::CardMode) {
    return {"paused", "running", "away", "disabled"};
}

[[nodiscard]] MenuBarSessionDerivedState derive(
    const MenuBarSession& session, const MenuBarSessionDerivedState::TimeOfDay& timeOfDay);

}  // namespace ostrel
