#include <gtest/gtest.h>

#include <string>

#include "platform/linux/notifications_bench.h"

namespace ostrel {
namespace {

using namespace std::chrono_literals;

constexpr const char* kKey = "ostrel.pendingNotifications.v1";
constexpr const char* kStored =
    R"({"pending":[{"body":{"args":["30"],"key":"body"},"category":"soon",)"
    R"("hour":9,"id":"weekly","since":794915400.25,"title":{"args":[],"key":"title"},)"
    R"("userInfo":{"kind":"eye"},"weekday":2}]})";

struct PendingNotificationsTest : NotificationsBench {
    void prepare() override { server = appeared(); }

    // Bytes with `from` replaced.
    static std::string stored(const std::string& from, const std::string& to) {
        std::string bytes = kStored;
        const std::size_t place = bytes.find(from);
        EXPECT_NE(place, std::string::npos) << from;
        return bytes.replace(place, from.size(), to);
    }
};

TEST_F(PendingNotificationsTest, WhatWaitsSurvivesTheProgramAndTheDocumentGoesWithTheLast) {
    launch();
    notifications->add(request("once", "once", AfterSeconds{3600}));
    notifications->add(request("weekly", "weekly", EveryWeek{2, 9}));
    notifications->add(request("removed", "removed", AfterSeconds{3600}));
    notifications->removePending("removed");
    launch();
    loop.runFor(59min);
    EXPECT_EQ(takeCalls(), Events{});
    loop.runFor(1min);
    EXPECT_EQ(takeCalls(), Events{"Notify 0 ONCE"});
    server->invoke(1, "postpone");
    settle();
    EXPECT_EQ(told, Events{"postpone soon eye"}) << "category and user info came through";

    notifications.reset();
    loop.runFor(std::chrono::days(12));  // two Mondays
    launch();
    notifications->add(request("weekly", "weekly", EveryWeek{2, 9}));
    loop.runFor(1s);
    EXPECT_EQ(takeCalls(), (Events{"CloseNotification 1", "Notify 0 WEEKLY"}));
    notifications->removePending("weekly");
    EXPECT_EQ(preferences.contents().size(), 0U);
}

TEST_F(PendingNotificationsTest, TheDocumentIsReadToTheLastBit) {
    preferences.write(kKey, kStored);
    launch();
    EXPECT_EQ(preferences.read(kKey), kStored) << "and written the same";
    loop.runFor(std::chrono::days(7));
    EXPECT_EQ(takeCalls(), Events{"Notify 0 TITLE"});
    EXPECT_EQ(server->lastNotify.value(4).toString(), "BODY 30");
}

TEST_F(PendingNotificationsTest, DamagedBytesCountAsNoneAndAreSetAsideBeforeTheyAreReplaced) {
    const std::string damaged[] = {
        "",
        "[]",
        "{}",
        R"({"pending":[{}]})",
        std::string(kStored).substr(0, 100),
        std::string(kStored) + "\xFF",
        stored(R"("hour":9)", R"("hour":24)"),
        stored(R"("hour":9)", R"("hour":9.5)"),
        stored(R"("hour":9,)", ""),
        stored(R"("weekday":2)", R"("weekday":0)"),
        stored("794915400.25", "1e999"),
        stored(R"({"kind":"eye"})", "[]"),
        stored(R"(["30"])", "[30]"),
    };
    std::size_t setAside = 0;
    for (const std::string& bytes : damaged) {
        preferences.write(kKey, bytes);
        launch();
        EXPECT_EQ(preferences.read(kKey), bytes) << "untouched until there is something to write";
        notifications->add(request("new", "new", AfterSeconds{1}));
        EXPECT_EQ(preferences.damaged().count(kKey), ++setAside) << bytes;
        launch();
        loop.runFor(1s);
        EXPECT_EQ(takeCalls(), Events{"Notify 0 NEW"}) << bytes;
    }
}

}  // namespace
}  // namespace ostrel
