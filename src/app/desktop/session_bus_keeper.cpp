#include "app/desktop/session_bus_keeper.h"

#include <QFileInfo>
#include <QStringList>
#include <QUrl>
#include <utility>

namespace ostrel {
namespace {

// The first socket that a D-Bus address names by its path.
QString socketPathOf(const QString& address) {
    constexpr QLatin1String kUnix("unix:");
    constexpr QLatin1String kPath("path=");
    for (const QString& one : address.split(QLatin1Char(';'))) {
        if (!one.startsWith(kUnix)) {
            continue;
        }
        for (const QString& part : one.mid(kUnix.size()).split(QLatin1Char(','))) {
            if (part.startsWith(kPath)) {
                return QUrl::fromPercentEncoding(part.mid(kPath.size()).toUtf8());
            }
        }
    }
    return {};
}

}  // namespace

SessionBusKeeper::SessionBusKeeper(const QDBusConnection& first, QString address)
    : address_(std::move(address)), socketPath_(socketPathOf(address_)) {
    retry_.setSingleShot(true);
    connect(&retry_, &QTimer::timeout, this, [this] { attempt(); });
    connect(&folder_, &QFileSystemWatcher::directoryChanged, this, [this] { lookForSocket(); });
    if (first.isConnected()) {
        adopt(first);
    } else {
        awaitBus();
    }
}

SessionBusKeeper::~SessionBusKeeper() {
    if (!connectionName_.isEmpty()) {
        bus_.reset();
        QDBusConnection::disconnectFromBus(connectionName_);
    }
}

QString SessionBusKeeper::address() {
    QString set = qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS");
    const QString runtime = qEnvironmentVariable("XDG_RUNTIME_DIR");
    if (!set.isEmpty() || runtime.isEmpty()) {
        return set;
    }
    return QStringLiteral("unix:path=%1/bus").arg(runtime);
}

void SessionBusKeeper::adopt(const QDBusConnection& bus) {
    bus_.emplace(bus);
    bus_->connect(QString(), QStringLiteral("/org/freedesktop/DBus/Local"),
                  QStringLiteral("org.freedesktop.DBus.Local"), QStringLiteral("Disconnected"),
                  this, SLOT(loseBus()));
}

void SessionBusKeeper::loseBus() {
    if (!bus_) {
        return;
    }
    bus_.reset();
    lost.send();
    if (!connectionName_.isEmpty()) {
        QDBusConnection::disconnectFromBus(std::exchange(connectionName_, {}));
    }
    awaitBus();
    lookForSocket();
}

void SessionBusKeeper::awaitBus() {
    const QString folder = QFileInfo(socketPath_).path();
    const bool isWatched = !socketPath_.isEmpty() &&
                           (folder_.directories().contains(folder) || folder_.addPath(folder));
    if (!isWatched && !address_.isEmpty()) {
        retry_.start(kRetryPeriod);
    }
}

// It appears a moment before anybody listens at it.
void SessionBusKeeper::lookForSocket() {
    if (!bus_ && QFileInfo::exists(socketPath_)) {
        attemptsLeft_ = kAttempts;
        retry_.start(std::chrono::milliseconds(0));
    }
}

void SessionBusKeeper::attempt() {
    static int count = 0;
    const QString name = QStringLiteral("ostrel-session-bus-%1").arg(++count);
    const QDBusConnection bus = QDBusConnection::connectToBus(address_, name);
    if (bus.isConnected()) {
        connectionName_ = name;
        folder_.removePaths(folder_.directories());
        adopt(bus);
        came.send();
        return;
    }
    QDBusConnection::disconnectFromBus(name);
    if (--attemptsLeft_ > 0) {
        retry_.start(kBetweenAttempts);
    } else {
        awaitBus();
    }
}

}  // namespace ostrel
