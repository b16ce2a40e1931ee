#include <gtest/gtest.h>

#include <limits>

#include "platform/macos/held_notifications.h"
#include "platform/macos/notification_mapping.h"
#include "platform/macos/permission_gate.h"

namespace ostrel {
namespace {

using Authorization = SystemNotifications::Authorization;
using Response = std::optional<NotificationResponse>;

const NotificationMapping::OwnActions kOwn = {"system.tap", "system.dismissal"};

NotificationRequest request(const std::string& id, NotificationTrigger trigger = {}) {
    return {.id = id,
            .category = "category",
            .title = {"title", {}},
            .body = {"body", {}},
            .userInfo = {},
            .trigger = trigger};
}

TEST(NotificationMapping, OnlyAPermissionThatWasGivenIsGrantedTheQuietOneIncluded) {
    const std::pair<std::int64_t, Authorization> cases[] = {
        {-1, Authorization::unknown}, {0, Authorization::unknown}, {1, Authorization::denied},
        {2, Authorization::granted},  {3, Authorization::granted}, {4, Authorization::unknown}};
    for (const auto& [status, expected] : cases) {
        EXPECT_EQ(NotificationMapping::authorizationOf(status), expected) << status;
    }
}

TEST(NotificationMapping, AnIntervalIsNeverShorterThanASecond) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(NotificationMapping::intervalOf({90.5}), 90.5);
    for (const double seconds : {1.0, 0.999, -60.0, nan}) {
        EXPECT_EQ(NotificationMapping::intervalOf({seconds}), 1) << seconds;
    }
}

TEST(NotificationMapping, ATapHasNoActionAButtonHasItsOwnAndClearingAwayIsNoAnswer) {
    const PlainDictionary info = {{"kind", std::string("eye")}, {"count", std::int64_t{3}}};
    const std::map<std::string, std::string> texts = {{"kind", "eye"}};
    const std::pair<const char*, Response> cases[] = {
        {"system.tap", Response({std::nullopt, "soon", texts})},
        {"postpone", Response({"postpone", "soon", texts})},
        {"system.dismissal", std::nullopt}};
    for (const auto& [action, expected] : cases) {
        EXPECT_EQ(NotificationMapping::responseOf({action, "soon", info}, kOwn), expected);
    }
}

struct HeldNotificationsTest : ::testing::Test {
    void hold(const NotificationRequest& each, double atSec) { held.hold(each, wallTimeAt(atSec)); }
    std::vector<NotificationRequest> take(double atSec) { return held.take(wallTimeAt(atSec)); }

    HeldNotifications held;
};

TEST_F(HeldNotificationsTest, WhatWasForNowIsHandedOverOnceWhileItIsNews) {
    hold(request("old"), 99.5);
    hold(request("new"), 100);
    EXPECT_EQ(take(110), std::vector{request("new")});
    EXPECT_TRUE(take(110).empty()) << "handed over twice";
}

TEST_F(HeldNotificationsTest, WhatHasATimeFiresWhenItWouldHaveOrInAMoment) {
    const auto after = [](double ahead, double over) {
        return std::vector{request("ahead", AfterSeconds{ahead}),
                           request("over", AfterSeconds{over}), request("weekly", EveryWeek{2, 9})};
    };
    for (const auto& [atSec, ahead, over] : {std::tuple(160, 540, 1), {50, 600, 30}}) {
        for (const NotificationRequest& each : after(600, 30)) {
            hold(each, 100);
        }
        EXPECT_EQ(take(atSec), after(ahead, over)) << "also where the clock was set back";
    }
}

TEST_F(HeldNotificationsTest, ALaterRequestTakesThePlaceOfAnEarlierAndARemovedOneIsGone) {
    hold(request("soon"), 100);
    hold(request("pause", AfterSeconds{60}), 100);
    hold(request("soon", AfterSeconds{5}), 101);
    held.remove("pause");
    held.remove("unknown");
    EXPECT_EQ(take(101), std::vector{request("soon", AfterSeconds{5})});
}

TEST(PermissionGate, TheUserIsAskedOnceAndWhatWaitedIsPostedWhenAllowed) {
    std::string log;
    WallTime now = wallTimeAt(0);
    PermissionGate gate({[&] { log += "ask "; }, [&] { log += "read "; },
                         [&](const NotificationRequest& posted) { log += posted.id + " "; }},
                        [&] { return now; });
    gate.settle(Authorization::unknown);
    gate.add(request("a"));
    gate.add(request("b", AfterSeconds{60}));
    gate.add(request("c", AfterSeconds{60}));
    gate.remove("c");
    gate.settle(Authorization::denied);
    EXPECT_EQ(log, "ask read read ");
    EXPECT_EQ(gate.authorization(), Authorization::denied);
    log.clear();
    now += wallSec(11);  // by now "a" is no news
    gate.settle(Authorization::granted);
    gate.add(request("d"));
    gate.settle(Authorization::granted);
    EXPECT_EQ(log, "b d ");
}

}  // namespace
}  // namespace ostrel
