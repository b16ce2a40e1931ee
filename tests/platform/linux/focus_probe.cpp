// focus_probe: the desktop's Do Not Disturb without the application, for tests against real
// desktops. Writes one line for each announcement, "on" or "off", until standard input ends.

#include <QCoreApplication>
#include <QSocketNotifier>
#include <cstdio>
#include <iostream>

#include "platform/linux/linux_do_not_disturb.h"

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const ostrel::LinuxDoNotDisturb source;
    using Announcement = ostrel::DistributedAnnouncements::Announcement;
    const ostrel::Subscription hearing =
        source.announced.subscribe([](const Announcement& announcement) {
            const bool* isOn = std::get_if<bool>(&announcement.userInfo.at("active"));
            std::cout << (isOn == nullptr ? "nonsense" : *isOn ? "on" : "off") << std::endl;
        });
    const QSocketNotifier input(fileno(stdin), QSocketNotifier::Read);
    QObject::connect(&input, &QSocketNotifier::activated, &QCoreApplication::quit);
    return QCoreApplication::exec();
}
