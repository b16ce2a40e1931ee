#include "menubar/menu_bar_formatter.h"

#include <gtest/gtest.h>

#include "menubar/menu_bar_tooltip.h"

namespace ostrel::MenuBarFormatter {

TEST(MenuBarFormatterTest, CountdownTextHasMinutesWithoutALimit) {
    const std::pair<std::int64_t, const char*> cases[] = {{-5, "00:00"},   {0, "00:00"},
                                                          {59, "00:59"},   {60, "01:00"},
                                                          {5999, "99:59"}, {6000, "100:00"}};
    for (const auto& [seconds, text] : cases) {
        EXPECT_EQ(countdownText(seconds), text);
    }
}

TEST(MenuBarFormatterTest, BodyIsNearestOnlyWhenItIsStrictlySooner) {
    const auto nearest = [](std::int64_t eye, std::int64_t body) {
        return nearestChannel({{eye}, {body}}).kind;
    };
    EXPECT_EQ(nearest(300, 300), Channel::eye);
    EXPECT_EQ(nearest(300, 299), Channel::body);
    EXPECT_EQ(nearest(300, 301), Channel::eye);
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

TEST(MenuBarFormatterTest, FirstStatusThatAppliesWins) {
    struct {
        bool isEnabled, isPaused, isAway;
        Status status;
    } const cases[] = {{true, false, false, Status::running},
                       {true, false, true, Status::away},
                       {true, true, true, Status::paused},
                       {false, true, true, Status::off}};
    for (const auto& [isEnabled, isPaused, isAway, status] : cases) {
        Context context;
        context.isEnabled = isEnabled;
        context.isPaused = isPaused;
        context.isAway = isAway;
        EXPECT_EQ(format(context).status, status);
    }
}

TEST(MenuBarTooltipTest, ShowsBothCountdownsOrThatNothingIsScheduled) {
    Context context;
    context.state = {{61}, {3000}};
    EXPECT_EQ(menuBarTooltip(context),
              (std::vector<LocalizedText>{{"menubar.tooltip.default", {}},
                                          {"menubar.status.next_eye %@", {"01:01"}},
                                          {"menubar.status.next_body %@", {"50:00"}}}));
    context.isEnabled = false;
    EXPECT_EQ(menuBarTooltip(context), (std::vector<LocalizedText>{{"menubar.tooltip.off", {}}}));
}

}  // namespace ostrel::MenuBarFormatter
