#include "platform/linux/linux_notifications.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/linux/notifications_bench.h"

namespace ostrel {
namespace {

using Answers = FakeNotificationServer::Answers;

struct LinuxNotificationsTest : NotificationsBench {
    void prepare() override {
        server = appeared();
        launch();
        settle();
    }
};

TEST_F(LinuxNotificationsTest, PostsInTheWordsThatTheServerUnderstands) {
    struct Case {
        QStringList abilities;
        const char* category = nullptr;
        const char* body = nullptr;
        QStringList actions;
    };
    const QStringList all{"default",     "Ostrel",   "start",
                          "START.TITLE", "postpone", "POSTPONE.TITLE"};
    const Case cases[] = {
        {{"body", "actions"}, "soon", "5 < 6 & \"X\" 30", all},
        {{"body", "actions", "body-markup"}, "soon", "5 &lt; 6 &amp; &quot;X&quot; 30", all},
        {{"actions"}, "plain", "5 < 6 & \"X\" 30", {"default", "Ostrel"}},
        {{"body", "persistence"}, "soon", "5 < 6 & \"X\" 30", {}},
    };
    for (const Case& c : cases) {
        server->abilities = c.abilities;
        launch();
        NotificationRequest post = request("a", "<title>");
        post.category = c.category;
        notifications->add(post);
        EXPECT_EQ(takeCalls(), Events{"Notify 0 <TITLE>"});
        ASSERT_EQ(server->lastNotify.size(), 8);
        EXPECT_EQ(server->lastNotify[4].toString(), c.body);
        EXPECT_EQ(server->lastNotify[5].toStringList(), c.actions);
    }
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
        server = appeared();
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

TEST_F(LinuxNotificationsTest, AnActionIsToldOnceAndOnlyWhenItMakesSense) {
    const struct {
        const char* action;
        Events told;
        Events calls;
    } cases[] = {
        {"start", {"start soon eye"}, {"CloseNotification 1"}},
        {"default", {"tap soon eye"}, {"CloseNotification 2"}},
        {"unheard-of", {}, {}},
    };
    FakeNotificationServer stranger(bus, kNextServer);
    uint number = 0;
    for (const auto& [action, toldThen, calls] : cases) {
        notifications->add(request("a", "title"));
        takeCalls();
        ++number;
        stranger.invoke(number, action);
        settle(kNextServer);
        server->tell("ActivationToken", {number, QStringLiteral("token")});
        server->tell("ActionInvoked", {QString::number(number), action});
        server->invoke(7, action);
        EXPECT_EQ(takeTold(), Events{}) << action;
        server->invoke(number, action);
        server->invoke(number, action);
        server->tellClosed(number, 3);
        EXPECT_EQ(takeTold(), toldThen) << action;
        EXPECT_EQ(takeCalls(), calls) << action;
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

        server->notifyAnswers = answers;
        notifications->add(request("b", "lost"));
        EXPECT_EQ(takeCalls(), Events{"Notify 0 LOST"});
        server->notifyAnswers = Answers::well;
        notifications->add(request("b", "better"));
        EXPECT_EQ(takeCalls(), Events{"Notify 0 BETTER"});
    }
}

}  // namespace
}  // namespace ostrel
