#include <gtest/gtest.h>

#include <QFile>
#include <memory>
#include <string>

#include "platform/linux/notifications_bench.h"

namespace ostrel {
namespace {

using Answers = FakeNotificationServer::Answers;
using namespace std::chrono_literals;

struct NotificationServerLossTest : NotificationsBench {
    std::unique_ptr<FakeNotificationServer> appeared(const QString& name) {
        auto server = std::make_unique<FakeNotificationServer>(bus, name);
        server->appear();
        settle(name);
        return server;
    }

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
    notifications->add(request("later", "later", AfterSeconds{120}));
    loop.runFor(60s);
    settleWithBus();
    notifications->removePending("removed");

    const auto server = appeared(kServer);
    EXPECT_EQ(server->takeCalls(), Events{"Notify 0 DUE"});
    EXPECT_EQ(notifications->authorization(), Authorization::granted);
    loop.runFor(60s);
    notifications->add(request("now", "fresh"));
    settle();
    EXPECT_EQ(server->takeCalls(), (Events{"Notify 0 LATER", "Notify 0 FRESH"}));
}

TEST_F(NotificationServerLossTest, TheNumbersOfADeadServerMeanNothing) {
    auto server = appeared(kServer);
    launch();
    notifications->add(request("a", "first"));
    notifications->add(request("b", "second"));
    settle();
    server.reset();
    settleWithBus();
    EXPECT_EQ(notifications->authorization(), Authorization::denied);
    notifications->add(request("c", "due", AfterSeconds{1}));
    loop.runFor(1s);
    settleWithBus();

    const auto next = appeared(kNextServer);
    EXPECT_EQ(next->takeCalls(), Events{"Notify 0 DUE"});
    EXPECT_EQ(notifications->authorization(), Authorization::granted);
    next->invoke(2, "start");
    notifications->removeDelivered("b");
    notifications->add(request("a", "again"));
    settle(kNextServer);
    EXPECT_EQ(told, Events{});
    EXPECT_EQ(next->takeCalls(), Events{"Notify 0 AGAIN"});
    next->invoke(2, "start");
    settle(kNextServer);
    EXPECT_EQ(told, Events{"start soon eye"});
}

TEST_F(NotificationServerLossTest, AnotherServerMayTakeOverWhileTheFirstLivesOn) {
    const auto server = appeared(kServer);
    server->notifyAnswers = Answers::late;
    launch();
    notifications->add(request("a", "first"));
    settle();
    const auto next = appeared(kNextServer);
    server->answerLate();
    server->invoke(1, "start");
    settle();
    EXPECT_EQ(told, Events{}) << "nobody sees the first any more";
    notifications->add(request("a", "second"));
    settle(kNextServer);
    EXPECT_EQ(server->takeCalls(), Events{"Notify 0 FIRST"});
    EXPECT_EQ(next->takeCalls(), Events{"Notify 0 SECOND"});
}

TEST_F(NotificationServerLossTest, AHangingServerHoldsNothingUpAndItsDeathLetsTheNextOneTakeOver) {
    for (const bool hangsFromTheStart : {true, false}) {
        auto server = appeared(kServer);
        (hangsFromTheStart ? server->abilityAnswers : server->notifyAnswers) = Answers::late;
        launch();
        notifications->add(request("a", "first"));
        notifications->add(request("b", "due", AfterSeconds{1}));
        loop.runFor(1s);
        settle();
        notifications->add(request("a", "second"));
        settle();
        server.reset();
        const auto next = appeared(kNextServer);
        EXPECT_EQ(next->takeCalls(), hangsFromTheStart
                                         ? Events{"Notify 0 DUE"}
                                         : (Events{"Notify 0 SECOND", "Notify 0 DUE"}))
            << "only what fell due waits for another server";
        EXPECT_EQ(told, Events{});
    }
}

// A server that the bus starts with a script of ours, which keeps count.
struct StartedServerTest : NotificationServerLossTest {
    void offerService(const char* howItEnds) {
        const QString script = bus.folder() + QStringLiteral("/script");
        QFile file(script);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("#!/bin/sh\necho start >>" + starts.toUtf8() + "\n" + howItEnds + "\n");
        file.setPermissions(file.permissions() | QFile::ExeOwner);
        file.close();
        bus.addService(FakeNotificationServer::kService, script);
    }
    [[nodiscard]] qsizetype count() const {
        QFile file(starts);
        return file.open(QIODevice::ReadOnly) ? file.readAll().count('\n') : 0;
    }

    QString starts = bus.folder() + QStringLiteral("/starts");
};

TEST_F(StartedServerTest, TheBusStartsAServerOnlyWhenThereIsSomethingToShow) {
    offerService("exit 0");
    for (int run = 1; run <= 2; ++run) {
        launch();
        if (run == 1) {
            settleWithBus();
            EXPECT_EQ(count(), 0);
            EXPECT_EQ(notifications->authorization(), Authorization::unknown);
        }
        notifications->add(request("a", "title"));
        ASSERT_TRUE(runUntil([&] { return count() == run; }));
        auto server = appeared(kServer);
        EXPECT_EQ(server->takeCalls(), Events{"Notify 0 TITLE"});
        EXPECT_EQ(notifications->authorization(), Authorization::granted);
        server.reset();
        settleWithBus();
        EXPECT_EQ(notifications->authorization(), Authorization::granted)
            << "it will be started again";
        EXPECT_EQ(count(), run);
    }
}

TEST_F(StartedServerTest, AServerThatCannotBeStartedIsTriedOnceForEachPost) {
    offerService("exit 1");
    launch();
    for (int post = 1; post <= 2; ++post) {
        notifications->add(request("due", "due", AfterSeconds{1}));
        loop.runFor(1s);
        ASSERT_TRUE(runUntil([&] {
            settleWithBus();
            return notifications->authorization() == Authorization::denied && count() == post;
        }));
    }
    settleWithBus();
    EXPECT_EQ(count(), 2);
}

TEST_F(StartedServerTest, AServerThatDiesBeforeItIsReadyIsNotStartedAgain) {
    offerService("exit 0");
    launch();
    notifications->add(request("a", "stale"));
    notifications->add(request("due", "due", AfterSeconds{1}));
    loop.runFor(1s);
    ASSERT_TRUE(runUntil([&] { return count() == 1; }));
    auto server = std::make_unique<FakeNotificationServer>(bus, kServer);
    server->abilityAnswers = Answers::late;
    server->appear();
    settle();
    server.reset();
    settleWithBus();
    EXPECT_EQ(count(), 1);
    EXPECT_EQ(appeared(kNextServer)->takeCalls(), Events{"Notify 0 DUE"});
}

TEST_F(NotificationServerLossTest, WithoutABusEverythingIsSwallowedAndWhatWaitsStays) {
    const auto everything = [this] {
        notifications->add(request("a", "title"));
        notifications->add(request("weekly", "weekly", EveryWeek{2, 9}));
        notifications->removeDelivered("a");
        loop.runFor(std::chrono::days(6));
        runFor(20ms);
        EXPECT_EQ(notifications->authorization(), Authorization::denied);
        EXPECT_TRUE(preferences.read(PendingNotificationsDocument::kKey));
    };
    launchOn(QDBusConnection(QStringLiteral("none")));
    everything();

    auto server = appeared(kServer);
    launch();
    settle();
    bus.end();
    runFor(20ms);
    notifications->add(request("a", "title"));
    notifications->removeDelivered("a");
    loop.runFor(std::chrono::days(7));
    runFor(20ms);
    EXPECT_TRUE(preferences.read(PendingNotificationsDocument::kKey));
}

}  // namespace
}  // namespace ostrel
