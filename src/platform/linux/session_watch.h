#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QTimer>
#include <memory>
#include <vector>

#include "base/subscription.h"
#include "platform/linux/bus_question.h"

namespace ostrel {

class SystemEvents;

// Keeps SystemEvents::isSessionOnScreen: off while a screen saver or a lock covers the session
// (org.*.ScreenSaver; LockedHint of org.freedesktop.login1) and while another user has the seat.
//
// A request to lock (org.freedesktop.login1.Session.Lock) counts at once, since most lockers cannot
// begin while another program holds the keyboard, but not for long: maybe nobody locks anything.
class SessionWatch : public QObject {
    Q_OBJECT

  public:
    static constexpr int kUntilLockedMs = 10'000;

    // `events` outlives the watch. A bus that is not connected is survived.
    explicit SessionWatch(SystemEvents& events,
                          const QDBusConnection& session = QDBusConnection::sessionBus(),
                          QDBusConnection system = QDBusConnection::systemBus());

    // From now on over this session bus: the one before is gone.
    void adopt(const QDBusConnection& session);

  private:
    struct Saver {
        Saver(const QDBusConnection& bus, const QString& name);

        BusQuestion question;
        bool isActive = false;
        Subscription observer;
    };

    Q_SLOT void handleLock();
    Q_SLOT void handleUnlock();
    void watchLogin(const QDBusMessage& session);
    void takeLogin(const QDBusMessage& properties);
    void tell();

    SystemEvents& events_;
    QDBusConnection system_;
    bool isElsewhere_ = false;
    bool isLocked_ = false;
    QTimer lockRequest_;
    std::vector<std::unique_ptr<Saver>> savers_;
    BusQuestion loginSession_;
    std::unique_ptr<BusQuestion> login_;
    QString loginPath_;
    Subscription sessionObserver_;
    Subscription loginObserver_;
};

}  // namespace ostrel
