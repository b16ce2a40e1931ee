#pragma once

#include <gtest/gtest.h>

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QStringList>
#include <string>
#include <utility>
#include <vector>

#include "platform/linux/private_bus.h"
#include "support/events.h"

namespace ostrel {

// A notification server with nothing to see, on a connection of its own: destroying it is its
// death.
class FakeNotificationServer : public QDBusVirtualObject {
  public:
    enum class Answers { well, late, withError, withNonsense };

    FakeNotificationServer(PrivateBus& bus, QString connection)
        : connection_(std::move(connection)), bus_(bus.connection(connection_)) {
        EXPECT_TRUE(bus_.registerVirtualObject(kPath, this));
    }
    FakeNotificationServer(const FakeNotificationServer&) = delete;
    FakeNotificationServer& operator=(const FakeNotificationServer&) = delete;
    ~FakeNotificationServer() override {
        bus_.unregisterObject(kPath);
        QDBusConnection::disconnectFromBus(connection_);
    }

    // Takes the place of a server that is there.
    void appear() {
        EXPECT_TRUE(bus_.interface()->registerService(
            kService, QDBusConnectionInterface::ReplaceExistingService,
            QDBusConnectionInterface::AllowReplacement));
    }

    bool handleMessage(const QDBusMessage& call, const QDBusConnection&) override {
        if (call.member() == QStringLiteral("GetCapabilities")) {
            ++questions;
            answer(call, abilityAnswers, abilities);
        } else if (call.member() == QStringLiteral("Notify")) {
            handleNotify(call);
        } else {
            calls.push_back(call.member().toStdString() + " " +
                            std::to_string(call.arguments().value(0).toUInt()));
        }
        return true;
    }
    QString introspect(const QString&) const override { return {}; }

    void answerLate() {
        for (const auto& [call, value] : std::exchange(unanswered_, {})) {
            bus_.send(call.createReply(value));
        }
    }

    void invoke(uint number, const char* action) {
        send("ActionInvoked", {number, QString::fromUtf8(action)});
    }
    void tellClosed(uint number, uint reason) { send("NotificationClosed", {number, reason}); }
    void send(const char* signal, const QVariantList& arguments) {
        QDBusMessage message = QDBusMessage::createSignal(kPath, kService, QLatin1String(signal));
        message.setArguments(arguments);
        bus_.send(message);
    }

    Events takeCalls() { return std::exchange(calls, {}); }

    QStringList abilities{QStringLiteral("body"), QStringLiteral("actions")};
    Answers abilityAnswers = Answers::well;
    Answers notifyAnswers = Answers::well;
    int questions = 0;  // for the abilities
    Events calls;       // all the others
    QVariantList lastNotify;

    inline static const QString kService = QStringLiteral("org.freedesktop.Notifications");
    inline static const QString kPath = QStringLiteral("/org/freedesktop/Notifications");

  private:
    void handleNotify(const QDBusMessage& call) {
        lastNotify = call.arguments();
        const uint replaces = lastNotify.value(1).toUInt();
        calls.push_back("Notify " + std::to_string(replaces) + " " +
                        lastNotify.value(3).toString().toStdString());
        answer(call, notifyAnswers, replaces != 0 ? replaces : ++lastNumber_);
    }

    void answer(const QDBusMessage& call, Answers how, const QVariant& value) {
        switch (how) {
            case Answers::well:
                bus_.send(call.createReply(value));
                break;
            case Answers::late:
                unanswered_.emplace_back(call, value);
                break;
            case Answers::withError:
                bus_.send(call.createErrorReply(QDBusError::UnknownMethod, QStringLiteral("no")));
                break;
            case Answers::withNonsense:
                bus_.send(call.createReply(QVariant(2.5)));
                break;
        }
    }

    QString connection_;
    QDBusConnection bus_;
    uint lastNumber_ = 0;
    std::vector<std::pair<QDBusMessage, QVariant>> unanswered_;
};

}  // namespace ostrel
