#pragma once

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <tuple>

#include "core/settings/json_record.h"
#include "core/settings/session_state_store.h"
#include "menubar/menu_bar_formatter.h"
#include "records/break_log_entry.h"

namespace ostrel {

// How things stand, for other programs. As JSON what is absent is left out.
struct ControlStatus {
    using State = MenuBarFormatter::Status;

    struct Countdown {
        std::int64_t remainingSec = 0;
        std::int64_t intervalSec = 0;

        static constexpr auto fields() {
            return std::tuple{Field{"remainingSec", &Countdown::remainingSec},
                              Field{"intervalSec", &Countdown::intervalSec}};
        }
        bool operator==(const Countdown&) const = default;
    };

    struct OnScreen {
        BreakKind kind = BreakKind::eye;
        std::int64_t remainingSec = 0;
        std::int64_t totalSec = 0;
        bool canSkip = false;
        bool canPostpone = false;

        static constexpr auto fields() {
            return std::tuple{
                Field{"kind", &OnScreen::kind}, Field{"remainingSec", &OnScreen::remainingSec},
                Field{"totalSec", &OnScreen::totalSec}, Field{"canSkip", &OnScreen::canSkip},
                Field{"canPostpone", &OnScreen::canPostpone}};
        }
        bool operator==(const OnScreen&) const = default;
    };

    struct Today {
        std::int64_t eyeBreaksCompleted = 0;
        std::int64_t bodyBreaksCompleted = 0;
        std::int64_t skips = 0;
        std::int64_t postpones = 0;

        static constexpr auto fields() {
            return std::tuple{Field{"eyeBreaksCompleted", &Today::eyeBreaksCompleted},
                              Field{"bodyBreaksCompleted", &Today::bodyBreaksCompleted},
                              Field{"skips", &Today::skips}, Field{"postpones", &Today::postpones}};
        }
        bool operator==(const Today&) const = default;
    };

    State state = State::running;
    std::set<PauseReason> pauseReasons;
    std::optional<std::string> pausedUntil;  // ISO 8601; absent: indefinite, or not by the user
    Countdown eye;
    Countdown body;
    BreakKind next = BreakKind::eye;
    bool eyeJoinsBody = false;  // the next eye break will be part of the body break
    std::optional<BreakKind> heldBreak;
    std::optional<OnScreen> breakOnScreen;
    std::int64_t penaltySec = 0;  // what the next eye break is lengthened by
    bool strictMode = false;
    bool canPostpone = false;  // a postpone is left
    Today today;
    std::int64_t dailyGoalBreaks = 0;
    std::int64_t streakDays = 0;
    std::int64_t longestStreakDays = 0;

    static constexpr auto fields() {
        using S = ControlStatus;
        return std::tuple{Field{"state", &S::state},
                          Field{"pauseReasons", &S::pauseReasons},
                          Field{"pausedUntil", &S::pausedUntil},
                          Field{"eye", &S::eye},
                          Field{"body", &S::body},
                          Field{"next", &S::next},
                          Field{"eyeJoinsBody", &S::eyeJoinsBody},
                          Field{"heldBreak", &S::heldBreak},
                          Field{"breakOnScreen", &S::breakOnScreen},
                          Field{"penaltySec", &S::penaltySec},
                          Field{"strictMode", &S::strictMode},
                          Field{"canPostpone", &S::canPostpone},
                          Field{"today", &S::today},
                          Field{"dailyGoalBreaks", &S::dailyGoalBreaks},
                          Field{"streakDays", &S::streakDays},
                          Field{"longestStreakDays", &S::longestStreakDays}};
    }
    bool operator==(const ControlStatus&) const = default;
};

}  // namespace ostrel
