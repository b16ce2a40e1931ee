#include <gtest/gtest.h>

#include "platform/macos/activity_rule.h"
#include "platform/macos/keyboard_debt.h"
#include "platform/macos/login_item_rule.h"
#include "platform/macos/mac_capabilities.h"

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
    struct Case {
        LoginItemStatus after = LoginItemStatus::enabled;
        bool isWanted = false;
        LoginItemOutcome outcome;
    };
    const Case cases[] = {
        {LoginItemStatus::enabled, true, {.isDone = true}},
        {LoginItemStatus::enabled, false, {.isDone = false}},
        {LoginItemStatus::notRegistered, true, {.isDone = false}},
        {LoginItemStatus::notRegistered, false, {.isDone = true}},
        {LoginItemStatus::requiresApproval, true, {.isDone = false, .needsApproval = true}},
        {LoginItemStatus::requiresApproval, false, {.isDone = true}},
        {LoginItemStatus::notFound, true, {.isDone = false}},
        {LoginItemStatus::notFound, false, {.isDone = true}},
    };
    for (const Case& each : cases) {
        EXPECT_EQ(loginItemOutcome(each.after, each.isWanted), each.outcome)
            << static_cast<int>(each.after) << (each.isWanted ? " wanted" : " not wanted");
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

Capability of(Capability::Topic topic, const MacFacts& facts) {
    return capabilitiesOnMac(facts).at(static_cast<std::size_t>(topic));
}

TEST(MacCapabilities, EveryTopicStandsAtItsPlaceWithAReasonExactlyWhenItDoesNotWork) {
    using Authorization = SystemNotifications::Authorization;
    for (const bool isInBundle : {true, false}) {
        for (const auto notifications :
             {Authorization::unknown, Authorization::granted, Authorization::denied}) {
            const auto all = capabilitiesOnMac({isInBundle, notifications});
            ASSERT_EQ(all.size(), enumNames(Capability::Topic{}).size());
            for (std::size_t i = 0; i < all.size(); ++i) {
                EXPECT_EQ(static_cast<std::size_t>(all[i].topic), i);
                EXPECT_EQ(all[i].reason.empty(), all[i].state == Capability::State::works) << i;
            }
        }
    }
}

TEST(MacCapabilities, NotificationsNeedABundleThenTheUsersPermission) {
    using Authorization = SystemNotifications::Authorization;
    constexpr auto kTopic = Capability::Topic::notifications;
    const auto reason = [](bool isInBundle, Authorization authorization) {
        return of(kTopic, {isInBundle, authorization}).reason;
    };
    EXPECT_EQ(reason(false, Authorization::granted), "capability.reason.mac_bundle");
    EXPECT_EQ(reason(true, Authorization::unknown), "capability.reason.mac_permission_asked");
    EXPECT_EQ(reason(true, Authorization::denied), "capability.reason.mac_permission");
    EXPECT_EQ(of(kTopic, {true, Authorization::granted}), Capability{kTopic});
    EXPECT_EQ(of(Capability::Topic::chimes, {false, Authorization::granted}).reason,
              "capability.reason.mac_bundle");
}

}  // namespace
}  // namespace ostrel
