#include "menubar/menu_bar_session.h"

#include <gtest/gtest.h>

namespace ostrel {
namespace {

using CardMode = MenuBarSessionDerivedState::CardMode;

std::string clockOf(WallTime time) {
    return std::to_string(static_cast<int>(secondsSinceReference(time)));
}

MenuBarSessionDerivedState derived(const MenuBarSession& session) {
    return derive(session, clockOf);
}

MenuBarSession paused(std::set<PauseReason> reasons, std::optional<WallTime> until = {}) {
    MenuBarSession session;
    session.context.isPaused = true;
    session.session.isPaused = true;
    session.session.pauseReasons = std::move(reasons);
    session.session.userPauseUntil = until;
    return session;
}

TEST(MenuBarSession, TheStatusLineTellsWhatCountsMost) {
    MenuBarSession session;
    const auto expect = [&session](const char* key, CardMode mode) {
        EXPECT_EQ(derived(session).statusLine, (LocalizedText{key, {}}));
        EXPECT_EQ(derived(session).cardMode, mode) << key;
    };
    expect("menubar.tooltip.on", CardMode::running);
    session.workUntil = wallTimeAt(4711);
    EXPECT_EQ(derived(session).statusLine, (LocalizedText{"menubar.status.on_until %@", {"4711"}}));
    session.context.strictMode = true;
    expect("menubar.status.strict_active", CardMode::running);
    session.context.isAway = true;
    expect("menubar.status.away", CardMode::away);
    session.isHeld = true;
    expect("menubar.status.held", CardMode::away);
    session.context.isPaused = true;
    session.session.pauseReasons = {PauseReason::focus, PauseReason::schedule};
    expect("state.paused", CardMode::paused);
    session.session.pauseReasons = {PauseReason::schedule};
    expect("menubar.status.off", CardMode::paused);
    session.context.isEnabled = false;
    expect("menubar.status.disabled", CardMode::disabled);
    session.isOnScreen = true;
    expect("menubar.status.on_screen", CardMode::disabled);
}

TEST(MenuBarSession, APauseIsDescribedByTheReasonThatTheUserCanEnd) {
    using enum PauseReason;
    const WallTime end = wallTimeAt(4711);
    const struct {
        MenuBarSession session;
        LocalizedText description;
        bool isUsers = false;
    } cases[] = {
        {paused({user, focus, schedule}, end), {"menubar.pause.until %@", {"4711"}}, true},
        {paused({user, schedule}), {"menubar.pause.indefinite_state", {}}, true},
        {paused({focus, schedule}), {"menubar.pause.focus", {}}, false},
        {paused({schedule}), {"menubar.pause.schedule", {}}, false},
        {{}, {}, false},
    };
    for (const auto& [session, description, isUsers] : cases) {
        const MenuBarSessionDerivedState state = derived(session);
        EXPECT_EQ(state.pauseDescription, description);
        EXPECT_EQ(state.isUserPaused, isUsers) << description.key;
        EXPECT_EQ(state.isPaused, !description.key.empty());
    }
}

TEST(MenuBarSession, AnyBreakOfTodayEndsTheEmptyState) {
    EXPECT_TRUE(derived({}).emptyState);
    using Day = DailyCounterModel;
    for (const auto count : {&Day::eyeBreaksCompleted, &Day::bodyBreaksCompleted, &Day::skipsToday,
                             &Day::postponesToday}) {
        MenuBarSession session;
        session.today.*count = 1;
        EXPECT_FALSE(derived(session).emptyState);
    }
}

}  // namespace
}  // namespace ostrel
