#pragma once

#include <QDBusConnection>
#include <QString>
#include <memory>
#include <optional>
#include <vector>

#include "base/subscription.h"
#include "platform/api/distributed_announcements.h"
#include "platform/linux/bus_question.h"
#include "platform/linux/do_not_disturb_source.h"

namespace ostrel {

// Announces the Do Not Disturb of the desktop at hand, under the name
// "com.apple.donotdisturb.notification" with a bool "active": once when it is first known, and each
// time that it changes.
//
// The switch is that of the notification server that runs at the moment: KDE's, dunst's,
// xfce4-notifyd's or GNOME's. Without a server it is off. Nothing is announced before the event
// loop runs.
class LinuxDoNotDisturb : public DistributedAnnouncements {
  public:
    // `gsettings`: the program, for GNOME alone.
    explicit LinuxDoNotDisturb(QDBusConnection bus = QDBusConnection::sessionBus(),
                               QString gsettings = QStringLiteral("gsettings"));
    LinuxDoNotDisturb(const LinuxDoNotDisturb&) = delete;
    LinuxDoNotDisturb& operator=(const LinuxDoNotDisturb&) = delete;
    ~LinuxDoNotDisturb() override;

    // From now on over this bus: the one before is gone.
    void adopt(const QDBusConnection& bus);

  private:
    void takeServer(const QDBusMessage& answer);
    void add(std::unique_ptr<DoNotDisturbSource> source);
    void announceChange();

    QDBusConnection bus_;
    QString gsettings_;
    std::optional<bool> announced_;
    std::unique_ptr<BusQuestion> server_;
    std::vector<std::unique_ptr<DoNotDisturbSource>> sources_;
    std::vector<Subscription> observers_;
    Subscription serverObserver_;
};

}  // namespace ostrel
