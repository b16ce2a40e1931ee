// notify_probe FOLDER: the notifications of the desktop without the application, for tests against
// real notification servers. What waits is kept in FOLDER.
//
// Reads one JSON object per line from standard input, until that ends:
//   {"do": "add", "id": "a", "title": "T", "body": "B", "kind": "eye", "afterSeconds": 1.5}
//   {"do": "removePending", "id": "a"}, {"do": "removeDelivered", "id": "a"}
// and writes one line for each response: "response ACTION CATEGORY KIND".

#include <QCoreApplication>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSocketNotifier>
#include <cstdio>
#include <iostream>
#include <string>

#include "platform/calendar/zoned_calendar.h"
#include "platform/linux/file_preferences.h"
#include "platform/linux/linux_clock.h"
#include "platform/linux/linux_notifications.h"
#include "platform/linux/linux_run_loop.h"

namespace ostrel {
namespace {

std::string text(const QJsonObject& object, const char* key) {
    return object[QLatin1String(key)].toString().toStdString();
}

void obey(const QJsonObject& command, SystemNotifications& notifications) {
    const std::string what = text(command, "do");
    const std::string id = text(command, "id");
    if (what == "removePending") {
        notifications.removePending(id);
    } else if (what == "removeDelivered") {
        notifications.removeDelivered(id);
    } else {
        NotificationRequest request{.id = id,
                                    .category = "soon",
                                    .title = {text(command, "title"), {}},
                                    .body = {text(command, "body"), {}},
                                    .userInfo = {{"kind", text(command, "kind")}},
                                    .trigger = {}};
        const QJsonValue seconds = command[QLatin1String("afterSeconds")];
        if (seconds.isDouble()) {
            request.trigger = AfterSeconds{seconds.toDouble()};
        }
        notifications.add(request);
    }
}

int run(const char* folder) {
    LinuxRunLoop runLoop(systemWallTime);
    const ZonedCalendar calendar(systemTimeZone);
    const SystemEvents events;
    FilePreferences preferences(folder, runLoop);
    LinuxNotifications notifications(
        {runLoop, calendar, systemWallTime, events, preferences,
         [](const LocalizedText& words) { return QString::fromStdString(words.key); }});
    notifications.registerCategories(
        {{"soon", {{"start", "Start now"}, {"postpone", "Postpone"}}}});
    const Subscription responses =
        notifications.responded.subscribe([](const NotificationResponse& response) {
            std::cout << "response " << response.action.value_or("tap") << ' ' << response.category
                      << ' ' << response.userInfo.at("kind") << std::endl;
        });
    QSocketNotifier input(fileno(stdin), QSocketNotifier::Read);
    QObject::connect(&input, &QSocketNotifier::activated, [&] {
        std::string line;
        do {
            if (!std::getline(std::cin, line)) {
                QCoreApplication::quit();
                return;
            }
            obey(QJsonDocument::fromJson(QByteArray::fromStdString(line)).object(), notifications);
        } while (std::cin.rdbuf()->in_avail() > 0);
    });
    return QCoreApplication::exec();
}

}  // namespace
}  // namespace ostrel

int main(int argc, char** argv) {
    // Else it could not be told whether another line is at hand.
    std::ios::sync_with_stdio(false);
    const QCoreApplication application(argc, argv);
    return argc == 2 ? ostrel::run(argv[1]) : 2;
}
