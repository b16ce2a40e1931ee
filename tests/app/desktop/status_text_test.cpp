#include "app/desktop/status_text.h"

#include <gtest/gtest.h>

#include "app/control/control_status.h"
#include "screens/texts/texts.h"

namespace ostrel {
namespace {

TEST(StatusText, OneLineTellsTheMostTelling) {
    Texts::setLanguage("en");
    ControlStatus status;
    status.eye = {600, 1200};
    status.body = {1800, 3000};
    const auto expectTold = [&status](const std::string& line, const std::string& compact) {
        EXPECT_TRUE(StatusText::lines(status).find(line) != std::string::npos) << line;
        EXPECT_EQ(StatusText::line(status), line);
        EXPECT_EQ(StatusText::compact(status), compact);
    };
    expectTold("Next eye break in 10:00", "10:00");
    status.heldBreak = BreakKind::body;
    expectTold("A body break waits until you are free", "waiting");
    status.heldBreak.reset();
    status.state = ControlStatus::State::paused;
    status.pauseReasons = {PauseReason::user};
    expectTold("Paused", "paused");
    status.breakOnScreen = {BreakKind::eye, 119, 120, true, true};
    expectTold("Eye break on the screen: 01:59 left", "break 01:59");
}

}  // namespace
}  // namespace ostrel
