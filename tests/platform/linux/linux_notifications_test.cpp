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
    explicit FakeNotificationServer(PrivateBus& bus, const QString& connection)
        : FakeBusService(bus, connection, kService) {
        setAbilities({"body", "actions"});
        answers["Notify"] = [this](const QDBusMessage& call) {
            const uint replaces = call.arguments().value(1).toUInt();
            return QVariantList{replaces != 0 ? replaces : ++lastNumber_};
        };
        answer("CloseNotification", {});
    }

    void setAbilities(const QStringList& abilities) {
        answer("GetCapabilities", {QVariant(abilities)});
    }

    bool handleMessage(const QDBusMessage& call, const QDBusConnection& connection) override {
        const QVariantList arguments = call.arguments();
        const std::string member = call.member().toStdString();
        if (member == "Notify") {
            lastNotify = arguments;
            calls_.push_back("Notify " + std::to_string(arguments.value(1).toUInt()) + " " +
                             arguments.value(3).toString().toStdString());
        } else if (member == "CloseNotification") {
            calls_.push_back("Close " + std::to_string(arguments.value(0).toUInt()));
        }
        return FakeBusService::handleMessage(call, connection);
    }
    Events takeCalls() { return std::exchange(calls_, {}); }

    void invoke(uint number, const char* action) {
        tell("ActionInvoked", {number, QString::fromUtf8(action)});
    }
    void tellClosed(uint number, uint reason) { tell("NotificationClosed", {number, reason}); }
    void tell(const char* signal, const QVariantList& arguments) {
        send("/org/freedesktop/Notifications", kService, signal, arguments);
    }

    QVariantList lastNotify;

    inline static const QString kService = "org.freedesktop.Notifications";

  private:
    uint lastNumber_ = 0;
    Events calls_;
};

// The notifications under test on a bus of their own, in virtual time.
struct NotificationsTest : BusTest {
    using Authorization = SystemNotifications::Authorization;

    [[nodiscard]] std::unique_ptr<FakeNotificationServer> appeared(const QString& name = kServer) {
        auto made = std::make_unique<FakeNotificationServer>(bus, name);
        made->appear();
        return made;
    }

    void launchWithServer() {
        server = nullptr;
        server = appeared();
        launch();
        settle();
    }
    // One run of the program, from now on; the categories are registered.
    void launch() { launchOn(bus.connection(kClient)); }
    void launchOn(const QDBusConnection& connection) {
        notifications.reset();
        notifications = std::make_unique<LinuxNotifications>(
            LinuxNotifications::Needs{loop, calendar, [this] { return loop.wallNow(); }, events,
                                      preferences, inWords},
            connection);
        responses_ = notifications->responded.subscribe([this](const NotificationResponse& r) {
            told.push_back(r.action.value_or("tap") + " " + r.category + " " +
                           r.userInfo.at("kind"));
        });
        notifications->registerCategories(
            {{"soon", {{"start", "start.title"}, {"postpone", "postpone.title"}}}, {"plain", {}}});
    }

    // In capitals, and the arguments behind them.
    static QString inWords(const LocalizedText& text) {
        const QString words = QString::fromStdString(text.key).toUpper();
        return text.args.empty() ? words : words + u' ' + QString::fromStdString(text.args[0]);
    }

    static NotificationRequest request(const std::string& id, const std::string& title,
                                       NotificationTrigger trigger = {}) {
        return {.id = id,
                .category = "soon",
                .title = {title, {}},
                .body = {"5 < 6 & \"x\"", {"30"}},
                .userInfo = {{"kind", "eye"}},
                .trigger = trigger};
    }

    // Until everything is said between the program and this server, which is there.
    void settle(const QString& name = kServer) {
        for (int round = 0; round < 4; ++round) {
            bus.settle(name, kClient);
            bus.settle(kClient, name);
        }
    }

    // What goes between the program and the bus has arrived, with no server in between.
    void settleWithBus() {
        const FakeNotificationServer nobody(bus, "nobody");
        settle("nobody");
    }

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
    inline static const QString kNextServer = "next server";

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

TEST_F(NotificationsTest, PostsInTheWordsThatTheServerUnderstands) {
    launchWithServer();
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
        server->setAbilities(c.abilities);
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

TEST_F(NotificationsTest, AnActionIsToldOnceAndOnlyWhenItMakesSense) {
    launchWithServer();
    const struct {
        const char* action;
        Events told;
        Events calls;
    } cases[] = {
        {"start", {"start soon eye"}, {"Close 1"}},
        {"default", {"tap soon eye"}, {"Close 2"}},
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
        server->invoke(7, action);
        EXPECT_EQ(takeTold(), Events{}) << action;
        server->invoke(number, action);
        server->invoke(number, action);
        server->tellClosed(number, 3);
        EXPECT_EQ(takeTold(), toldThen) << action;
        EXPECT_EQ(takeCalls(), calls) << action;
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

TEST_F(NotificationsTest, AServerThatStartsLateGetsWhatFellDueAndNothingStale) {
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

TEST_F(NotificationsTest, TheNumbersOfADeadServerMeanNothing) {
    launchWithServer();
    notifications->add(request("a", "first"));
    settle();
    server.reset();
    settleWithBus();
    server = appeared();
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
    settleWithBus();
    EXPECT_EQ(bus.starts(), 0);
    // The script ends without having become a server: that is tried once for each post.
    for (int post = 1; post <= 2; ++post) {
        notifications->add(request("due", "due", AfterSeconds{1}));
        loop.runFor(1s);
        ASSERT_TRUE(runUntil([&] {
            settleWithBus();
            return notifications->authorization() == Authorization::denied && bus.starts() == post;
        }));
    }
    server = appeared();
    EXPECT_EQ(takeCalls(), Events{"Notify 0 DUE"});
}

constexpr const char* kKey = "ostrel.pendingNotifications.v1";
constexpr const char* kStored =
    R"({"pending":[{"body":{"args":["30"],"key":"body"},"category":"soon",)"
    R"("hour":9,"id":"weekly","since":794915400.25,"title":{"args":[],"key":"title"},)"
    R"("userInfo":{"kind":"eye"},"weekday":2}]})";

// The stored bytes with `from` replaced.
std::string stored(const std::string& from, const std::string& to) {
    std::string bytes = kStored;
    const std::size_t place = bytes.find(from);
    EXPECT_NE(place, std::string::npos) << from;
    return bytes.replace(place, from.size(), to);
}

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
    server = appeared();
    const std::string damaged[] = {
        "",
        "{}",
        std::string(kStored).substr(0, 100),
        stored(R"("hour":9)", R"("hour":24)"),
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
