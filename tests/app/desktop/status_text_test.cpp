#include "app/desktop/status_text.h"

#include <gtest/gtest.h>

#include "app/control/control_status.h"
#include "screens/texts/texts.h"

namespace ostrel {
namespace {

using State = ControlStatus::State;

TEST(StatusText, TellsTheMostTellingFirstAndAPauseBesideABreak) {
    Texts::setLanguage("en");
    const ControlStatus::OnScreen eyeBreak{BreakKind::eye, 119, 120, true, true};
    const struct {
        State state = State::running;
        std::optional<ControlStatus::OnScreen> breakOnScreen;
        std::optional<BreakKind> held;
        const char* lines = "";  // the first of them
        const char* line = "";
        const char* compact = "";
    } cases[] = {
        {State::running,
         {},
         {},
         "Ostrel is on\nNext eye break in 10:00\n",
         "Next eye break in 10:00",
         "10:00"},
        {State::running,
         {},
         BreakKind::body,
         "A body break waits until you are free\nNext eye",
         "A body break waits until you are free",
         "waiting"},
        {State::running,
         eyeBreak,
         {},
         "Eye break on the screen: 01:59 left\nNext eye",
         "Eye break on the screen: 01:59 left",
         "break 01:59"},
        {State::paused, {}, {}, "Paused\nUntil you resume\n", "Paused", "paused"},
        {State::paused,
         eyeBreak,
         {},
         "Eye break on the screen: 01:59 left\nPaused\nUntil you resume\n",
         "Eye break on the screen: 01:59 left",
         "break 01:59"},
    };
    for (const auto& [state, breakOnScreen, held, lines, line, compact] : cases) {
        ControlStatus status;
        status.state = state;
        if (state == State::paused) {
            status.pauseReasons = {PauseReason::user};
        }
        status.breakOnScreen = breakOnScreen;
        status.heldBreak = held;
        status.eye = {600, 1200};
        status.body = {1800, 3000};
        const std::string all = StatusText::lines(status);
        EXPECT_TRUE(all.starts_with(lines)) << all;
        EXPECT_EQ(StatusText::line(status), line);
        EXPECT_EQ(StatusText::compact(status), compact);
    }
}

}  // namespace
}  // namespace ostrel
