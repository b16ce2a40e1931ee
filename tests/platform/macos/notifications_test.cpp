#include <gtest/gtest.h>

#include <limits>

#include "platform/macos/held_notifications.h"
#include "platform/macos/notification_mapping.h"

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
    const Authorization expected[] = {Authorization::unknown, Authorization::denied,
                                      Authorization::granted, Authorization::granted,
                                      Authorization::unknown};
    for (std::int64_t status = 0; status < 5; ++status) {
        EXPECT_EQ(NotificationMapping::authorizationOf(status), expected[status]) << status;
    }
    EXPECT_EQ(NotificationMapping::authorizationOf(-1), Authorization::unknown);
}

TEST(NotificationMapping, AnIntervalIsNeverShorterThanASecond) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(NotificationMapping::intervalOf({90.5}), 90.5);
    EXPECT_EQ(NotificationMapping::intervalOf({1}), 1);
    for (const double seconds : {0.999, 0.0, -60.0, nan}) {
        EXPECT_EQ(NotificationMapping::intervalOf({seconds}), 1) << seconds;
    }
}

TEST(NotificationMapping, ATapHasNoActionAButtonHasItsOwnAndClearingAwayIsNoAnswer) {
    const PlainDictionary info = {{"kind", std::string("eye")}, {"count", std::int64_t{3}}};
    const std::map<std::string, std::string> texts = {{"kind", "eye"}};
    EXPECT_EQ(NotificationMapping::responseOf({"system.tap", "soon", info}, kOwn),
              Response({std::nullopt, "soon", texts}));
    EXPECT_EQ(NotificationMapping::responseOf({"postpone", "soon", info}, kOwn),
              Response({"postpone", "soon", texts}));
    EXPECT_EQ(NotificationMapping::responseOf({"system.dismissal", "soon", info}, kOwn),
              std::nullopt);
}

struct HeldNotificationsTest : ::testing::Test {
    void hold(const NotificationRequest& each, double atSec) { held.hold(each, wallTimeAt(atSec)); }
    std::vector<NotificationRequest> take(double atSec) { return held.take(wallTimeAt(atSec)); }

    HeldNotifications held;
};

TEST_F(HeldNotificationsTest, WhatWasForNowIsHandedOverOnlyWhileItIsNews) {
    hold(request("old"), 99.5);
    hold(request("new"), 100);
    const auto handedOver = take(110);
    ASSERT_EQ(handedOver.size(), 1u);
    EXPECT_EQ(handedOver.front(), request("new"));
    EXPECT_TRUE(take(110).empty()) << "handed over twice";
}

TEST_F(HeldNotificationsTest, WhatHasATimeFiresWhenItWouldHaveOrInAMoment) {
    hold(request("ahead", AfterSeconds{600}), 100);
    hold(request("over", AfterSeconds{30}), 100);
    hold(request("weekly", EveryWeek{2, 9}), 100);
    const std::vector<NotificationRequest> expected = {request("ahead", AfterSeconds{540}),
                                                       request("over", AfterSeconds{1}),
                                                       request("weekly", EveryWeek{2, 9})};
    EXPECT_EQ(take(160), expected);
}

TEST_F(HeldNotificationsTest, ALaterRequestTakesThePlaceOfAnEarlierAndARemovedOneIsGone) {
    hold(request("soon"), 100);
    hold(request("pause", AfterSeconds{60}), 100);
    hold(request("soon", AfterSeconds{5}), 101);
    held.remove("pause");
    held.remove("unknown");
    EXPECT_EQ(take(101), std::vector{request("soon", AfterSeconds{5})});
}

TEST_F(HeldNotificationsTest, AClockThatIsSetBackPutsNothingOff) {
    hold(request("pause", AfterSeconds{60}), 5000);
    hold(request("soon"), 5000);
    const std::vector<NotificationRequest> expected = {request("pause", AfterSeconds{60}),
                                                       request("soon")};
    EXPECT_EQ(take(1400), expected);
}

}  // namespace
}  // namespace ostrel
