#include "menubar/menu_bar_formatter.h"

#include <gtest/gtest.h>

namespace ostrel::MenuBarFormatter {

TEST(MenuBarFormatterTest, CountdownTextHasMinutesWithoutALimit) {
    const std::pair<std::int64_t, const char*> cases[] = {{-5, "00:00"},   {0, "00:00"},
                                                          {59, "00:59"},   {60, "01:00"},
                                                          {5999, "99:59"}, {6000, "100:00"}};
    for (const auto& [seconds, text] : cases) {
        EXPECT_EQ(countdownText(seconds), text);
    }
}

TEST(MenuBarFormatterTest, WaitingPenaltyIsPartOfTheTimeShown) {
    Context context;
    context.state = {{300}, {3000}};
    context.pendingPenalty = 40;
    EXPECT_EQ(format(context).title, "05:40");
    EXPECT_TRUE(format(context).penaltyPending);
    context.pendingPenalty = -40;
    EXPECT_EQ(format(context).title, "05:00");
    EXPECT_FALSE(format(context).penaltyPending);
}

TEST(MenuBarFormatterTest, RingsEmptyWithinTheirBounds) {
    Context context;
    context.state = {{300}, {-5}};
    context.eyeIntervalSec = 1200;
    context.bodyIntervalSec = 3000;
    EXPECT_EQ(format(context).eyeFraction, 0.25);
    EXPECT_EQ(format(context).bodyFraction, 0.0);
    context.eyeIntervalSec = 0;
    context.state.body.remainingSec = 3001;
    EXPECT_EQ(format(context).eyeFraction, 0.0);
    EXPECT_EQ(format(context).bodyFraction, 1.0);
}

}  // namespace ostrel::MenuBarFormatter
