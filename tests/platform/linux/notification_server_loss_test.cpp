#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "platform/linux/notifications_bench.h"

namespace ostrel {
namespace {

using Answers = FakeNotificationServer::Answers;
using namespace std::chrono_literals;

struct NotificationServerLossTest : NotificationsBench {
    // What goes between the program and the bus has arrived, with no server in between.
    void settleWithBus() {
        const FakeNotificationServer nobody(bus, QStringLiteral("nobody"));
        settle(QStringLiteral("nobody"));
    }
};

TEST_F(NotificationServerLossTest, AServerThatStartsLateGetsWhatFellDueAndNothingStale) {
    launch();
    EXPECT_EQ(notifications->authorization(), Authorization::unknown);
    settleWithBus();
    EXPECT_EQ(notifications->authorization(), Authorization::denied);
    notifications->add(request("now", "stale"));
    notifications->add(request("due", "due", AfterSeconds{60}));
    notifications->add(request("removed", "removed", AfterSeconds{60}));
    loop.runFor(60s);
    settleWithBus();
    notifications->removePending("removed");
    server = appeared();
    EXPECT_EQ(takeCalls(), Events{"Notify 0 DUE"});
    EXPECT_EQ(notifications->authorization(), Authorization::granted);
}

TEST_F(NotificationServerLossTest, TheNumbersOfADeadServerMeanNothing) {
    server = appeared();
    launch();
    notifications->add(request("a", "first"));
    notifications->add(request("b", "second"));
    settle();
    server.reset();
    settleWithBus();
    notifications->add(request("c", "due", AfterSeconds{1}));
    loop.runFor(1s);
    settleWithBus();

    server = appeared();
    EXPECT_EQ(takeCalls(), Events{"Notify 0 DUE"});
    server->invoke(2, "start");
    settle();
    notifications->removeDelivered("b");
    notifications->add(request("a", "again"));
    EXPECT_EQ(takeCalls(), Events{"Notify 0 AGAIN"});
    EXPECT_EQ(told, Events{});
    server->invoke(2, "start");
    EXPECT_EQ(takeTold(), Events{"start soon eye"});
}

TEST_F(NotificationServerLossTest, AnotherServerMayTakeOverWhileTheFirstLivesOn) {
    server = appeared();
    server->notifyAnswers = Answers::late;
    launch();
    notifications->add(request("a", "first"));
    settle();
    const auto next = appeared(kNextServer);
    settle(kNextServer);
    server->answerLate();
    server->invoke(1, "start");
    EXPECT_EQ(takeTold(), Events{}) << "nobody sees the first any more";
    notifications->add(request("a", "second"));
    settle(kNextServer);
    EXPECT_EQ(server->takeCalls(), Events{"Notify 0 FIRST"});
    EXPECT_EQ(next->takeCalls(), Events{"Notify 0 SECOND"});
}

TEST_F(NotificationServerLossTest, AHangingServersDeathLetsTheNextOneTakeOver) {
    server = appeared();
    server->abilityAnswers = Answers::late;
    launch();
    notifications->add(request("a", "stale"));
    notifications->add(request("b", "due", AfterSeconds{1}));
    loop.runFor(1s);
    EXPECT_EQ(takeCalls(), Events{});
    server.reset();
    server = appeared();
    EXPECT_EQ(takeCalls(), Events{"Notify 0 DUE"});
}

TEST_F(NotificationServerLossTest, TheBusStartsAServerOnlyWhenThereIsSomethingToShow) {
    bus.addService(FakeNotificationServer::kService);
    launch();
    settleWithBus();
    EXPECT_EQ(bus.starts(), 0);
    notifications->add(request("a", "title"));
    ASSERT_TRUE(runUntil([&] { return bus.starts() == 1; }));
    server = appeared();
    EXPECT_EQ(takeCalls(), Events{"Notify 0 TITLE"});
    server.reset();
    settleWithBus();
    EXPECT_EQ(notifications->authorization(), Authorization::granted) << "it can be started again";
    EXPECT_EQ(bus.starts(), 1);
}

TEST_F(NotificationServerLossTest, AServerThatCannotBeStartedIsTriedOnceForEachPost) {
    bus.addService(FakeNotificationServer::kService, "exit 1");
    launch();
    for (int post = 1; post <= 2; ++post) {
        notifications->add(request("due", "due", AfterSeconds{1}));
        loop.runFor(1s);
        ASSERT_TRUE(runUntil([&] {
            settleWithBus();
            return notifications->authorization() == Authorization::denied && bus.starts() == post;
        }));
    }
}

TEST_F(NotificationServerLossTest, WithoutABusEverythingIsSwallowedAndWhatWaitsStays) {
    const auto post = [this] {
        notifications->add(request("a", "title"));
        notifications->add(request("weekly", "weekly", EveryWeek{2, 9}));
        notifications->removeDelivered("a");
        loop.runFor(std::chrono::days(7));
        runFor(20ms);
        EXPECT_TRUE(preferences.read(PendingNotificationsDocument::kKey));
    };
    launchOn(QDBusConnection(QStringLiteral("none")));
    post();
    EXPECT_EQ(notifications->authorization(), Authorization::denied);
    server = appeared();
    launch();
    settle();
    bus.end();
    post();
}

}  // namespace
}  // namespace ostrel
