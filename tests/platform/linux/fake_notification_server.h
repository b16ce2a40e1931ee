#pragma once

#include <string>
#include <utility>
#include <vector>

#include "platform/linux/fake_bus_service.h"

namespace ostrel {

// A notification server with nothing to see.
class FakeNotificationServer : public FakeBusService {
  public:
    enum class Answers { well, late, withError, withNonsense };

    FakeNotificationServer(PrivateBus& bus, const QString& connection)
        : FakeBusService(bus, connection, kService) {}

    bool handleMessage(const QDBusMessage& call, const QDBusConnection&) override {
        if (call.member() == QStringLiteral("GetCapabilities")) {
            answerTo(call, abilityAnswers, abilities);
        } else if (call.member() == QStringLiteral("Notify")) {
            lastNotify = call.arguments();
            const uint replaces = lastNotify.value(1).toUInt();
            calls.push_back("Notify " + std::to_string(replaces) + " " +
                            lastNotify.value(3).toString().toStdString());
            answerTo(call, notifyAnswers, replaces != 0 ? replaces : ++lastNumber_);
        } else {
            calls.push_back(call.member().toStdString() + " " +
                            std::to_string(call.arguments().value(0).toUInt()));
        }
        return true;
    }

    void answerLate() {
        for (const auto& [call, value] : std::exchange(unanswered_, {})) {
            bus_.send(call.createReply(value));
        }
    }

    void invoke(uint number, const char* action) {
        tell("ActionInvoked", {number, QString::fromUtf8(action)});
    }
    void tellClosed(uint number, uint reason) { tell("NotificationClosed", {number, reason}); }
    void tell(const char* signal, const QVariantList& arguments) {
        send(QStringLiteral("/org/freedesktop/Notifications"), kService, QLatin1String(signal),
             arguments);
    }

    Events takeCalls() { return std::exchange(calls, {}); }

    QStringList abilities{QStringLiteral("body"), QStringLiteral("actions")};
    Answers abilityAnswers = Answers::well;
    Answers notifyAnswers = Answers::well;
    Events calls;  // but for the questions for the abilities
    QVariantList lastNotify;

    inline static const QString kService = QStringLiteral("org.freedesktop.Notifications");

  private:
    void answerTo(const QDBusMessage& call, Answers how, const QVariant& value) {
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

    uint lastNumber_ = 0;
    std::vector<std::pair<QDBusMessage, QVariant>> unanswered_;
};

}  // namespace ostrel
