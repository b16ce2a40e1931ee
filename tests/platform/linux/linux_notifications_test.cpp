#include "platform/linux/linux_notifications.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/calendar/zoned_calendar.h"
#include "platform/linux/event_loop.h"
#include "platform/linux/fake_bus_service.h"
#include "platform/virtual/memory_preferences.h"
#include "platform/virtual/virtual_run_loop.h"

namespace ostrel {
namespace {

using namespace std::chrono_literals;

// A notification server with nothing to see.
class FakeNotificationServer : public FakeBusService {
  public:
    FakeNotificationServer(PrivateBus& bus, const QString& connection)
        : FakeBusService(bus, connection, kService) {
        answer("GetCapabilities", {QStringList{"body", "actions"}});
        answers["Notify"] = [this](const QDBusMessage& call) {
            const uint replaces = call.arguments().value(1).toUInt();
            return QVariantList{replaces != 0 ? replaces : ++lastNumber_};
        };
        answer("CloseNotification", {});
    }

    bool handleMessage(const QDBusMessage& call, const QDBusConnection& connection) override {
        const QVariantList arguments = call.arguments();
        const std::string member = call.member().toStdString();
        if (member == "Notify") {
            calls_.push_back("Notify " + std::to_string(arguments.value(1).toUInt()) + " " +
                             arguments.value(3).toString().toStdString());
        } else if (member == "CloseNotification") {
            calls_.push_back("Close " + std::to_string(arguments.value(0).toUInt()));
        }
        return FakeBusService::handleMessage(call, connection);
    }
    Events takeCalls() { return std::exchange(calls_, {}); }

    void invoke(uint number, const char* action) {
        send("/org/freedesktop/Notifications", kService, "ActionInvoked", {number, action});
    }

    inline static const QString kService = "org.freedesktop.Notifications";

  private:
    uint lastNumber_ = 0;
    Events calls_;
};

// The notifications under test on a bus of their own, in virtual time.
struct NotificationsTest : BusTest {
    using Authorization = SystemNotifications::Authorization;

    void startServer() {
        server = nullptr;
        server = std::make_unique<FakeNotificationServer>(bus, kServer);
        server->appear();
    }
    void launchWithServer() {
        startServer();
        launch();
        settle();
    }
    // One run of the program, from now on; the categories are registered.
    void launch() {
        notifications.reset();
        const auto inCapitals = [](const LocalizedText& text) {
            return QString::fromStdString(text.key).toUpper();
        };
        notifications = std::make_unique<LinuxNotifications>(
            LinuxNotifications::Needs{loop, calendar, [this] { return loop.wallNow(); }, events,
                                      preferences, inCapitals},
            bus.connection(kClient));
        responses_ = notifications->responded.subscribe([this](const NotificationResponse& r) {
            told.push_back(r.action.value_or("tap") + " " + r.category + " " +
                           r.userInfo.at("kind"));
        });
        notifications->registerCategories(
            {{"soon", {{"start", "start.title"}, {"postpone", "postpone.title"}}}});
    }

    static NotificationRequest request(const std::string& id, const std::string& title,
                                       NotificationTrigger trigger = {}) {
        return {.id = id,
                .category = "soon",
                .title = {title, {}},
                .body = {"body", {"30"}},
                .userInfo = {{"kind", "eye"}},
                .trigger = trigger};
    }

    // Until everything is said between the program, the bus and a server that is there.
    void settle() { bus.settleBoth(kServer, kClient); }

    // What the server was called, and what the program was told, since the last time.
    Events takeCalls() {
        settle();
        return server->takeCalls();
    }
    Events takeTold() {
        settle();
        return std::exchange(told, {});
    }

    inline static const QString kClient = "client";
    inline static const QString kServer = "server";

    VirtualRunLoop loop{wallTimeAt(794'915'400)};  // 2026-03-11 09:50 UTC, a Wednesday
    ZonedCalendar calendar{[] { return "UTC"; }};
    SystemEvents events;
    MemoryPreferences preferences;
    Events told;  // the responses
    std::unique_ptr<FakeNotificationServer> server;
    std::unique_ptr<LinuxNotifications> notifications;

  private:
    Subscription responses_;
};

TEST_F(NotificationsTest, WhileOneIsUnansweredTheLastWordCounts) {
    struct Case {
        const char* label;
        std::vector<const char*> steps;  // a title, or empty to withdraw
        Events afterTheAnswer;
    };
    const Case cases[] = {
        {"replaced twice", {"2", "3"}, {"Notify 1 3"}},
        {"withdrawn", {""}, {"Close 1"}},
        {"replaced and withdrawn", {"2", ""}, {"Close 1"}},
        {"withdrawn and posted again", {"", "2"}, {"Notify 1 2"}},
    };
    for (const Case& c : cases) {
        launchWithServer();
        server->hangs = true;
        notifications->add(request("a", "1"));
        for (const std::string step : c.steps) {
            if (step.empty()) {
                notifications->removeDelivered("a");
            } else {
                notifications->add(request("a", step));
            }
        }
        EXPECT_EQ(takeCalls(), Events{"Notify 0 1"}) << c.label;
        server->wakeUp();
        EXPECT_EQ(takeCalls(), c.afterTheAnswer) << c.label;
    }
}

TEST_F(NotificationsTest, ABodyIsShownToTheLetterWhateverTheServerMakesOfMarkup) {
    const std::pair<const char*, std::string> cases[] = {{"body", "<B> & 5"},
                                                         {"body-markup", "&lt;B&gt; &amp; 5"}};
    for (const auto& [ability, shown] : cases) {
        startServer();
        server->answer("GetCapabilities", {QStringList{ability}});
        launch();
        settle();
        NotificationRequest hard = request("a", "title");
        hard.body.key = "<b> & 5";
        notifications->add(hard);
        settle();
        const std::string& asked = server->questions.back();
        EXPECT_TRUE(asked.starts_with("Notify ") &&
                    asked.find(" TITLE " + shown + " ") < asked.size())
            << asked;
    }
}

TEST_F(NotificationsTest, AnAnswerBelongsToWhatWasOnTheScreen) {
    launchWithServer();
    notifications->add(request("a", "title"));
    takeCalls();
    server->hangs = true;
    NotificationRequest body = request("a", "title");
    body.userInfo = {{"kind", "body"}};
    notifications->add(body);
    server->invoke(1, "start");
    EXPECT_EQ(takeTold(), Events{"start soon eye"});
    server->wakeUp();
    EXPECT_EQ(takeCalls(), Events{"Notify 1 TITLE"}) << "what takes its place stays";
    server->invoke(1, "start");
    EXPECT_EQ(takeTold(), Events{"start soon body"});
}

TEST_F(NotificationsTest, AResponseMayPostAndWithdrawAndEndTheProgram) {
    launchWithServer();
    notifications->add(request("a", "title"));
    notifications->add(request("b", "other"));
    takeCalls();
    Subscription watch = notifications->responded.subscribe([this](const auto&) {
        notifications->add(request("a", "again"));
        notifications->removeDelivered("b");
    });
    server->invoke(1, "start");
    EXPECT_EQ(takeCalls(), (Events{"Close 1", "Notify 0 AGAIN", "Close 2"}));
    watch = notifications->responded.subscribe([this](const auto&) { notifications.reset(); });
    server->invoke(3, "default");
    EXPECT_EQ(takeCalls(), Events{"Close 3"});
    EXPECT_EQ(notifications, nullptr);
}

TEST_F(NotificationsTest, TheNumbersOfADeadServerMeanNothing) {
    launchWithServer();
    notifications->add(request("a", "first"));
    settle();
    server.reset();
    settle();
    startServer();
    settle();
    server->invoke(1, "start");
    settle();
    notifications->add(request("a", "again"));
    EXPECT_EQ(takeCalls(), Events{"Notify 0 AGAIN"});
    EXPECT_EQ(told, Events{});
    server->invoke(1, "start");
    EXPECT_EQ(takeTold(), Events{"start soon eye"});
}

TEST_F(NotificationsTest, TheBusStartsAServerOnlyWhenThereIsSomethingToShow) {
    bus.addService(FakeNotificationServer::kService);
    launch();
    settle();
    EXPECT_EQ(bus.starts(), 0);
    // Where that fails, it is tried once for each post.
    for (int post = 1; post <= 2; ++post) {
        notifications->add(request("due", "due", AfterSeconds{1}));
        loop.runFor(1s);
        ASSERT_TRUE(runUntil([&] {
            settle();
            return notifications->authorization() == Authorization::denied && bus.starts() == post;
        }));
    }
    startServer();
    EXPECT_TRUE(runUntil([&] { return takeCalls() == Events{"Notify 0 DUE"}; }))
        << "what fell due waits for one";
}

constexpr const char* kKey = "ostrel.pendingNotifications.v1";
constexpr const char* kStored =
    R"({"pending":[{"body":{"args":["30"],"key":"body"},"category":"soon",)"
    R"("hour":9,"id":"weekly","since":794915400.25,"title":{"args":[],"key":"title"},)"
    R"("userInfo":{"kind":"eye"},"weekday":2}]})";

TEST_F(NotificationsTest, WhatWaitsSurvivesTheProgramAndTheDocumentGoesWithTheLast) {
    launchWithServer();
    notifications->add(request("once", "once", AfterSeconds{3600}));
    notifications->add(request("weekly", "weekly", EveryWeek{2, 9}));
    notifications->add(request("removed", "removed", AfterSeconds{3600}));
    notifications->removePending("removed");
    notifications.reset();
    loop.runFor(std::chrono::days(12));  // two Mondays
    launch();
    notifications->add(request("weekly", "weekly", EveryWeek{2, 9}));
    loop.runFor(1s);
    EXPECT_EQ(takeCalls(), (Events{"Notify 0 ONCE", "Notify 0 WEEKLY"}));
    server->invoke(1, "postpone");
    EXPECT_EQ(takeTold(), Events{"postpone soon eye"}) << "category and user info came through";
    notifications->removePending("weekly");
    EXPECT_EQ(preferences.contents().size(), 0U);
}

TEST_F(NotificationsTest, DamagedBytesCountAsNoneAndAreSetAsideBeforeTheyAreReplaced) {
    startServer();
    const std::string damaged[] = {
        "",
        std::string(kStored).substr(0, 100),
        std::string(kStored).replace(std::string(kStored).find("9,"), 1, "24"),
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
