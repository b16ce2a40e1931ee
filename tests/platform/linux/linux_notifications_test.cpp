#include "platform/linux/linux_notifications.h"

#include <gtest/gtest.h>

#include <QDBusArgument>
#include <string>
#include <vector>

#include "platform/linux/notifications_bench.h"

namespace ostrel {
namespace {

using Answers = FakeNotificationServer::Answers;

struct LinuxNotificationsTest : NotificationsBench {
    void SetUp() override {
        NotificationsBench::SetUp();
        if (!IsSkipped()) {
            server = std::make_unique<FakeNotificationServer>(bus, kServer);
            server->appear();
            launch();
            settle();
        }
    }
    std::unique_ptr<FakeNotificationServer> server;

    // What the server was called and what the program was told since the last time.
    Events takeCalls() {
        settle();
        return server->takeCalls();
    }
    Events takeTold() {
        settle();
        return std::exchange(told, {});
    }
};

TEST_F(LinuxNotificationsTest, PostsInTheWordsThatTheServerUnderstands) {
    struct Case {
        QStringList abilities;
        const char* category = nullptr;
        const char* body = nullptr;
        QStringList actions;
    };
    const QStringList tap{"default", "Ostrel"};
    const QStringList all{"default",     "Ostrel",   "start",
                          "START.TITLE", "postpone", "POSTPONE.TITLE"};
    const Case cases[] = {
        {{"body", "actions"}, "soon", "5 < 6 & \"X\" 30", all},
        {{"body", "actions", "body-markup"}, "soon", "5 &lt; 6 &amp; &quot;X&quot; 30", all},
        {{"actions"}, "plain", "5 < 6 & \"X\" 30", tap},
        {{"actions"}, "never registered", "5 < 6 & \"X\" 30", tap},
        {{"body", "persistence"}, "soon", "5 < 6 & \"X\" 30", {}},
        {{}, "soon", "5 < 6 & \"X\" 30", {}},
    };
    for (const Case& c : cases) {
        server->abilities = c.abilities;
        launch();
        NotificationRequest post = request("a", "<title>");
        post.category = c.category;
        notifications->add(post);
        EXPECT_EQ(takeCalls(), Events{"Notify 0 <TITLE>"});
        ASSERT_EQ(server->lastNotify.size(), 8);
        EXPECT_EQ(server->lastNotify[0].toString(), "Ostrel");
        EXPECT_EQ(server->lastNotify[2].toString(), "ostrel");
        EXPECT_EQ(server->lastNotify[4].toString(), c.body);
        EXPECT_EQ(server->lastNotify[5].toStringList(), c.actions);
        const auto hints = qdbus_cast<QVariantMap>(server->lastNotify[6]);
        EXPECT_EQ(hints, (QVariantMap{{"desktop-entry", "org.ostrel.Ostrel"}}));
        EXPECT_EQ(server->lastNotify[7].toInt(), -1);
        EXPECT_EQ(notifications->authorization(), Authorization::granted);
    }
}

TEST_F(LinuxNotificationsTest, OneOfTheSameIdReplacesWhatIsShownAndWithdrawingClosesIt) {
    notifications->add(request("a", "first"));
    notifications->add(request("b", "other"));
    settle();
    notifications->add(request("a", "second"));
    EXPECT_EQ(takeCalls(), (Events{"Notify 0 FIRST", "Notify 0 OTHER", "Notify 1 SECOND"}));
    notifications->removePending("a");
    notifications->removeDelivered("unknown");
    EXPECT_EQ(takeCalls(), Events{});
    notifications->removeDelivered("a");
    notifications->removeDelivered("a");
    EXPECT_EQ(takeCalls(), Events{"CloseNotification 1"});
    notifications->add(request("a", "third"));
    server->tellClosed(2, 1);
    settle();
    notifications->removeDelivered("b");
    EXPECT_EQ(takeCalls(), Events{"Notify 0 THIRD"}) << "b was gone";
}

TEST_F(LinuxNotificationsTest, WhileOneIsUnansweredTheLastWordCounts) {
    struct Case {
        const char* label;
        std::vector<const char*> steps;  // a title, or empty to withdraw
        Events afterTheAnswer;
    };
    const Case cases[] = {
        {"replaced twice", {"2", "3"}, {"Notify 1 3"}},
        {"withdrawn", {""}, {"CloseNotification 1"}},
        {"replaced and withdrawn", {"2", ""}, {"CloseNotification 1"}},
        {"withdrawn and posted again", {"", "2"}, {"Notify 1 2"}},
        {"nothing more", {}, {}},
    };
    for (const Case& c : cases) {
        server = nullptr;
        server = std::make_unique<FakeNotificationServer>(bus, kServer);
        server->appear();
        server->notifyAnswers = Answers::late;
        launch();
        settle();
        notifications->add(request("a", "1"));
        for (const std::string step : c.steps) {
            if (step.empty()) {
                notifications->removeDelivered("a");
            } else {
                notifications->add(request("a", step));
            }
        }
        EXPECT_EQ(takeCalls(), Events{"Notify 0 1"}) << c.label;
        server->notifyAnswers = Answers::well;
        server->answerLate();
        EXPECT_EQ(takeCalls(), c.afterTheAnswer) << c.label;
    }
}

TEST_F(LinuxNotificationsTest, AnActionIsToldOnceAndTheNotificationClosed) {
    struct Case {
        const char* action;
        Events told;
        Events calls;
    };
    const Case cases[] = {
        {"start", {"start soon eye"}, {"CloseNotification"}},
        {"postpone", {"postpone soon eye"}, {"CloseNotification"}},
        {"default", {"tap soon eye"}, {"CloseNotification"}},
        {"unheard-of", {}, {}},
        {"Ostrel", {}, {}},
        {"", {}, {}},
    };
    uint number = 0;
    for (const Case& c : cases) {
        notifications->add(request("a", "title"));
        takeCalls();
        ++number;
        server->send("ActivationToken", {number, QStringLiteral("token")});
        server->invoke(number, c.action);
        server->invoke(number, c.action);
        server->tellClosed(number, 3);
        EXPECT_EQ(takeTold(), c.told) << c.action;
        Events calls = takeCalls();
        for (std::string& call : calls) {
            call = call.substr(0, call.find(' '));
        }
        EXPECT_EQ(calls, c.calls) << c.action;
    }
}

TEST_F(LinuxNotificationsTest, AServerMaySayThatItIsClosedBeforeItSaysWhatWasPressed) {
    notifications->add(request("a", "title"));
    takeCalls();
    server->tellClosed(1, 2);
    server->invoke(1, "start");
    EXPECT_EQ(takeTold(), Events{"start soon eye"});
    EXPECT_EQ(takeCalls(), Events{});

    notifications->add(request("a", "title"));
    takeCalls();
    server->tellClosed(2, 1);
    settle();
    notifications->removeDelivered("a");
    server->invoke(2, "start");
    EXPECT_EQ(takeTold(), Events{}) << "withdrawn";

    notifications->add(request("a", "title"));
    takeCalls();
    server->tellClosed(3, 1);
    settle();
    notifications->add(request("a", "again"));
    EXPECT_EQ(takeCalls(), Events{"Notify 0 AGAIN"}) << "there is nothing to replace";
}

TEST_F(LinuxNotificationsTest, AnAnswerBelongsToWhatWasOnTheScreen) {
    notifications->add(request("a", "title"));
    takeCalls();
    server->notifyAnswers = Answers::late;
    NotificationRequest body = request("a", "title");
    body.userInfo = {{"kind", "body"}};
    notifications->add(body);
    server->invoke(1, "start");
    EXPECT_EQ(takeTold(), Events{"start soon eye"});
    server->answerLate();
    EXPECT_EQ(takeCalls(), Events{"Notify 1 TITLE"}) << "what takes its place stays";
    server->invoke(1, "start");
    EXPECT_EQ(takeTold(), Events{"start soon body"});
}

TEST_F(LinuxNotificationsTest, WhatIsNotOursOrMakesNoSenseIsIgnored) {
    notifications->add(request("a", "title"));
    takeCalls();
    FakeNotificationServer stranger(bus, kNextServer);
    stranger.invoke(1, "start");
    stranger.tellClosed(1, 1);
    settle(kNextServer);
    server->invoke(7, "start");
    server->tellClosed(7, 1);
    server->invoke(0, "start");
    server->send("ActionInvoked", {QStringLiteral("1"), QStringLiteral("start")});
    server->send("ActionInvoked", {1U});
    server->send("NotificationClosed", {1U});
    EXPECT_EQ(takeTold(), Events{});
    notifications->removeDelivered("a");
    EXPECT_EQ(takeCalls(), Events{"CloseNotification 1"}) << "it is still there";
}

TEST_F(LinuxNotificationsTest, AResponseMayPostAndWithdrawAndEndTheProgram) {
    notifications->add(request("a", "title"));
    notifications->add(request("b", "other"));
    takeCalls();
    Subscription watch = notifications->responded.subscribe([this](const auto&) {
        notifications->add(request("a", "again"));
        notifications->removeDelivered("b");
    });
    server->invoke(1, "start");
    EXPECT_EQ(takeCalls(),
              (Events{"CloseNotification 1", "Notify 0 AGAIN", "CloseNotification 2"}));
    watch = notifications->responded.subscribe([this](const auto&) { notifications.reset(); });
    server->invoke(3, "default");
    EXPECT_EQ(takeCalls(), Events{"CloseNotification 3"});
    EXPECT_EQ(notifications, nullptr);
}

TEST_F(LinuxNotificationsTest, ErrorsAndNonsenseForAnAnswerAreSurvived) {
    for (const Answers answers : {Answers::withError, Answers::withNonsense}) {
        server->abilityAnswers = answers;
        launch();
        notifications->add(request("a", "title"));
        EXPECT_EQ(takeCalls(), Events{"Notify 0 TITLE"});
        EXPECT_EQ(server->lastNotify.value(5).toStringList(), QStringList());
        EXPECT_EQ(notifications->authorization(), Authorization::granted) << "it was shown";

        server->notifyAnswers = answers;
        notifications->add(request("b", "lost"));
        settle();
        notifications->removeDelivered("b");
        notifications->add(request("a", "lost too"));
        settle();
        server->notifyAnswers = Answers::well;
        notifications->add(request("b", "better"));
        notifications->removeDelivered("a");
        const Events calls = takeCalls();
        ASSERT_EQ(calls.size(), 4U);
        EXPECT_EQ(calls[0], "Notify 0 LOST");
        EXPECT_EQ(calls[2], "Notify 0 BETTER");
        EXPECT_EQ(calls[3].substr(0, 18), "CloseNotification ") << "the first is still shown";
    }
}

}  // namespace
}  // namespace ostrel
