#pragma once

#include <gtest/gtest.h>

#include <QString>
#include <memory>
#include <string>

#include "platform/calendar/zoned_calendar.h"
#include "platform/linux/event_loop.h"
#include "platform/linux/fake_notification_server.h"
#include "platform/linux/linux_notifications.h"
#include "platform/linux/private_bus.h"
#include "platform/virtual/memory_preferences.h"
#include "platform/virtual/virtual_run_loop.h"
#include "support/events.h"

namespace ostrel {

// The notifications under test on a bus of their own, in virtual time.
struct NotificationsBench : BusTest {
    using Authorization = SystemNotifications::Authorization;

    [[nodiscard]] std::unique_ptr<FakeNotificationServer> appeared(const QString& name = kServer) {
        auto made = std::make_unique<FakeNotificationServer>(bus, name);
        made->appear();
        return made;
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
                           (r.userInfo.contains("kind") ? r.userInfo.at("kind") : "-"));
        });
        notifications->registerCategories(
            {{"soon", {{"start", "start.title"}, {"postpone", "postpone.title"}}}, {"plain", {}}});
    }

    static QString inWords(const LocalizedText& text) {
        QString words = QString::fromStdString(text.key).toUpper();
        for (const std::string& argument : text.args) {
            words += u' ' + QString::fromStdString(argument);
        }
        return words;
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

    // What the server was called, and what the program was told, since the last time.
    Events takeCalls() {
        settle();
        return server->takeCalls();
    }
    Events takeTold() {
        settle();
        return std::exchange(told, {});
    }

    inline static const QString kClient = QStringLiteral("client");
    inline static const QString kServer = QStringLiteral("server");
    inline static const QString kNextServer = QStringLiteral("next server");

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

}  // namespace ostrel
