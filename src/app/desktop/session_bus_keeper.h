#pragma once

#include <QDBusConnection>
#include <QFileSystemWatcher>
#include <QObject>
#include <QString>
#include <QTimer>
#include <optional>

#include "base/signal.h"

namespace ostrel {

// A connection to the session bus that comes back when the bus does: a bus may be restarted, or
// start after the program. The toolkit's own connection to it is lost for good then.
//
// While there is a bus it does nothing. Without one it waits for the bus's socket to appear; where
// that cannot be watched, it tries every kRetryPeriod.
class SessionBusKeeper : public QObject {
    Q_OBJECT

  public:
    static constexpr std::chrono::seconds kRetryPeriod{30};

    // `first` is the connection to begin with, `address` where the bus is looked for later.
    SessionBusKeeper(const QDBusConnection& first, QString address);
    ~SessionBusKeeper() override;

    // Where the session bus of this process is: as the environment says, or else in the user's
    // runtime folder.
    [[nodiscard]] static QString address();

    // Absent while there is no bus.
    [[nodiscard]] const std::optional<QDBusConnection>& bus() const { return bus_; }
    // One that is not connected while there is none.
    [[nodiscard]] QDBusConnection busOrNone() const {
        return bus_.value_or(QDBusConnection(QString()));
    }

    Signal<> came;
    Signal<> lost;

  private:
    // How often a bus whose socket has just appeared is tried, until it listens.
    static constexpr int kAttempts = 20;
    static constexpr std::chrono::milliseconds kBetweenAttempts{250};

    Q_SLOT void loseBus();
    void adopt(const QDBusConnection& bus);
    void lookForSocket();
    void attempt();
    void awaitBus();

    QString address_;
    QString socketPath_;  // empty where the address names none
    QString connectionName_;
    std::optional<QDBusConnection> bus_;
    int attemptsLeft_ = 0;
    QFileSystemWatcher folder_;
    QTimer retry_;
};

}  // namespace ostrel
