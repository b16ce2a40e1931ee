#pragma once

#include <gtest/gtest.h>

#include <QDBusConnectionInterface>
#include <QDBusPendingCall>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QProcess>
#include <string>
#include <utility>
#include <vector>

#include "platform/linux/private_bus.h"
#include "screens/gui.h"

namespace ostrel {

// A watcher of status items, on a connection of its own: destroying it is its death.
class FakeWatcher : public QDBusVirtualObject {
  public:
    enum class Host { present, absent };

    FakeWatcher(PrivateBus& bus, QString connection, Host atFirst = Host::present)
        : host_(atFirst), connection_(std::move(connection)), bus_(bus.connection(connection_)) {
        EXPECT_TRUE(bus_.registerVirtualObject(QStringLiteral("/StatusNotifierWatcher"), this));
        EXPECT_TRUE(bus_.interface()->registerService(kName));
    }
    FakeWatcher(const FakeWatcher&) = delete;
    FakeWatcher& operator=(const FakeWatcher&) = delete;
    ~FakeWatcher() override { QDBusConnection::disconnectFromBus(connection_); }

    bool handleMessage(const QDBusMessage& call, const QDBusConnection&) override {
        if (call.member() == QStringLiteral("RegisterStatusNotifierItem")) {
            items.push_back(call.arguments().value(0).toString());
            bus_.send(call.createReply());
        } else if (call.member() == QStringLiteral("Get")) {
            const QDBusVariant answer(host_ == Host::present);
            bus_.send(call.createReply(QVariant::fromValue(answer)));
        }
        return true;
    }
    QString introspect(const QString&) const override { return {}; }

    void bringHost() {
        host_ = Host::present;
        bus_.send(QDBusMessage::createSignal(QStringLiteral("/StatusNotifierWatcher"), kName,
                                             QStringLiteral("StatusNotifierHostRegistered")));
    }

    QStringList items;

  private:
    Host host_;
    static inline const QString kName = QStringLiteral("org.kde.StatusNotifierWatcher");
    QString connection_;
    QDBusConnection bus_;
};

// What a connection sends, whoever it is meant for.
class BusMonitor {
  public:
    BusMonitor(const PrivateBus& bus, QDBusConnection watched) : watched_(std::move(watched)) {
        process_.start(QStringLiteral("dbus-monitor"),
                       {QStringLiteral("--address"), bus.address()});
        EXPECT_TRUE(process_.waitForStarted());
        while (!read().contains("NameAcquired") && process_.waitForReadyRead()) {
        }
        (void)drain();
    }

    BusMonitor(const BusMonitor&) = delete;
    BusMonitor& operator=(const BusMonitor&) = delete;
    ~BusMonitor() {
        process_.kill();
        process_.waitForFinished();
    }

    // Signals and calls since the last time, each as its member and its arguments.
    [[nodiscard]] std::vector<std::string> drain() {
        static int count = 0;
        const QByteArray marker = "End" + QByteArray::number(++count);
        watched_.send(QDBusMessage::createSignal(QStringLiteral("/"), QStringLiteral("test.Marker"),
                                                 QString::fromLatin1(marker)));
        EXPECT_TRUE(runUntil([&] { return read().contains("member=" + marker); }));
        std::vector<std::string> messages;
        const QByteArray sender = "sender=" + watched_.baseService().toLatin1() + " ";
        bool isTaken = false;
        for (const QByteArray& line : std::exchange(text_, {}).split('\n')) {
            const qsizetype member = line.indexOf("member=");
            if (member >= 0 || !line.startsWith(' ')) {
                isTaken = member >= 0 && line.contains(sender) && !line.contains(marker) &&
                          !line.contains("interface=org.freedesktop.DBus;");
                if (isTaken) {
                    messages.push_back(line.mid(member + 7).toStdString());
                }
            } else if (isTaken) {
                messages.back() += " " + line.trimmed().toStdString();
            }
        }
        return messages;
    }

  private:
    [[nodiscard]] const QByteArray& read() { return text_ += process_.readAllStandardOutput(); }

    QDBusConnection watched_;
    QProcess process_;
    QByteArray text_;
};

// The answer to a call; the callee may live in this process.
inline QDBusMessage ask(const QDBusConnection& from, const QString& service, const char* path,
                        const char* interface, const char* member,
                        const QVariantList& arguments = {}) {
    QDBusMessage call =
        QDBusMessage::createMethodCall(service, QString::fromLatin1(path),
                                       QString::fromLatin1(interface), QString::fromLatin1(member));
    call.setArguments(arguments);
    const QDBusPendingCall pending = from.asyncCall(call);
    EXPECT_TRUE(runUntil([&] { return pending.isFinished(); })) << member;
    return pending.reply();
}

inline std::string errorOf(const QDBusMessage& answer) {
    return answer.errorName().section(QLatin1Char('.'), -1).toStdString();
}

}  // namespace ostrel
