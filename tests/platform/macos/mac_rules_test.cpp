#include <gtest/gtest.h>

#include "platform/macos/activity_rule.h"
#include "platform/macos/keyboard_debt.h"
#include "platform/macos/login_item_rule.h"
#include "platform/macos/mac_capabilities.h"
#include "platform/macos/program_rule.h"

namespace ostrel {
namespace {

TEST(ActivityRule, TheNapIsHeldOffWhileSomethingCountsOrIsShown) {
    EXPECT_TRUE(needsToStayAwake({})) << "counting down";
    EXPECT_FALSE(needsToStayAwake({.isEnabled = false}));
    EXPECT_FALSE(needsToStayAwake({.isPaused = true}));
    EXPECT_FALSE(needsToStayAwake({.isAway = true}));
    EXPECT_TRUE(needsToStayAwake({.isPaused = true, .isBreakPresented = true}));
    EXPECT_TRUE(needsToStayAwake({.isEnabled = false, .isBreakPresented = true}));
    EXPECT_TRUE(needsToStayAwake({.isAway = true, .isBreakHeld = true}));
}

TEST(LoginItemRule, TheStatusAfterwardsCountsAndOnlyAWishNeedsApproval) {
    const struct {
        LoginItemStatus after = LoginItemStatus::enabled;
        LoginItemOutcome ifWanted;
        LoginItemOutcome ifNot;
    } cases[] = {
        {LoginItemStatus::enabled, {.isDone = true}, {.isDone = false}},
        {LoginItemStatus::notRegistered, {.isDone = false}, {.isDone = true}},
        {LoginItemStatus::requiresApproval,
         {.isDone = false, .needsApproval = true},
         {.isDone = true}},
        {LoginItemStatus::notFound, {.isDone = false}, {.isDone = true}},
    };
    for (const auto& [after, ifWanted, ifNot] : cases) {
        EXPECT_EQ(loginItemOutcome(after, true), ifWanted) << static_cast<int>(after);
        EXPECT_EQ(loginItemOutcome(after, false), ifNot) << static_cast<int>(after);
    }
}

TEST(KeyboardDebt, TheKeyboardGoesBackUnlessTheUserTurnedElsewhereOrItWasOurs) {
    constexpr std::int64_t kOwn = 10;
    EXPECT_TRUE(owesKeyboard(20, kOwn, kOwn));
    EXPECT_FALSE(owesKeyboard(20, kOwn, 30));
    EXPECT_FALSE(owesKeyboard(20, kOwn, 20));
    EXPECT_FALSE(owesKeyboard(20, kOwn, std::nullopt));
    EXPECT_FALSE(owesKeyboard(kOwn, kOwn, kOwn));
    EXPECT_FALSE(owesKeyboard(std::nullopt, kOwn, kOwn));
}

TEST(MacCapabilities, EveryTopicStandsAtItsPlaceWithAReasonExactlyWhenItDoesNotWork) {
    using Authorization = SystemNotifications::Authorization;
    const struct {
        bool isInBundle;
        Authorization notifications;
        const char* reason;
    } cases[] = {{false, Authorization::granted, "capability.reason.mac_bundle"},
                 {true, Authorization::unknown, "capability.reason.mac_permission_asked"},
                 {true, Authorization::denied, "capability.reason.mac_permission"},
                 {true, Authorization::granted, ""}};
    for (const auto& [isInBundle, notifications, reason] : cases) {
        const auto all = capabilitiesOnMac({isInBundle, notifications});
        ASSERT_EQ(all.size(), enumNames(Capability::Topic{}).size());
        for (std::size_t i = 0; i < all.size(); ++i) {
            EXPECT_EQ(static_cast<std::size_t>(all[i].topic), i);
            EXPECT_EQ(all[i].reason.empty(), all[i].state == Capability::State::works) << i;
        }
        EXPECT_EQ(all[static_cast<std::size_t>(Capability::Topic::notifications)].reason, reason);
        EXPECT_EQ(all[static_cast<std::size_t>(Capability::Topic::chimes)].reason.empty(),
                  isInBundle);
    }
}

TEST(ProgramRule, OfferedIsWhatPeopleKnowCanFindAgainAndIsNotOurs) {
    EXPECT_TRUE(isToChoose({"org.example.Call", true, 7}, 8));
    EXPECT_FALSE(isToChoose({std::nullopt, true, 7}, 8));
    EXPECT_FALSE(isToChoose({"org.example.Agent", false, 7}, 8));
    EXPECT_FALSE(isToChoose({"org.ostrel.Ostrel", true, 8}, 8));
}

}  // namespace
}  // namespace ostrel
