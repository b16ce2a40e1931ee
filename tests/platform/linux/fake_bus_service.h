#pragma once

#include <gtest/gtest.h>

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QStringList>
#include <algorithm>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "platform/linux/private_bus.h"
#include "support/events.h"

namespace ostrel {

// A program on a bus that answers calls on all its paths as the test says, on a connection of its
// own: destroying it is its death.
class FakeBusService : public QDBusVirtualObject {
  public:
    using Answer = std::function<QVariantList(const QDBusMessage&)>;

    FakeBusService(PrivateBus& bus, QString connection, QString name)
        : bus_(bus.connection(connection)),
          connection_(std::move(connection)),
          name_(std::move(name)) {
        EXPECT_TRUE(bus_.registerVirtualObject("/", this, QDBusConnection::SubPath));
    }
    FakeBusService(const FakeBusService&) = delete;
    FakeBusService& operator=(const FakeBusService&) = delete;
    ~FakeBusService() override {
        bus_.unregisterObject("/");
        QDBusConnection::disconnectFromBus(connection_);
    }

    // Takes the place of one that is there.
    void appear() {
        EXPECT_TRUE(bus_.interface()->registerService(
            name_, QDBusConnectionInterface::ReplaceExistingService,
            QDBusConnectionInterface::AllowReplacement));
    }

    // By the method and its arguments in words, or by the method alone; what is not here is
    // answered with an error, an empty function with silence.
    std::map<std::string, Answer> answers;
    void answer(const std::string& question, const QVariantList& values) {
        answers[question] = [values](const QDBusMessage&) { return values; };
    }

    Events questions;
    [[nodiscard]] auto timesAsked(const std::string& method) const {
        return std::ranges::count_if(questions, [&](const std::string& question) {
            return question.substr(0, question.find(' ')) == method;
        });
    }

    bool hangs = false;
    // Answers what it was asked meanwhile.
    void wakeUp() {
        hangs = false;
        for (const auto& [question, call] : std::exchange(waiting_, {})) {
            reply(question, call);
        }
    }

    void send(const QString& path, const QString& interface, const QString& signal,
              const QVariantList& arguments) {
        QDBusMessage message = QDBusMessage::createSignal(path, interface, signal);
        message.setArguments(arguments);
        bus_.send(message);
    }
    void tellProperties(const QString& path, const QString& interface,
                        const QVariantMap& changed = {}, const QStringList& invalidated = {}) {
        send(path, "org.freedesktop.DBus.Properties", "PropertiesChanged",
             {interface, changed, invalidated});
    }

    bool handleMessage(const QDBusMessage& call, const QDBusConnection&) override {
        QStringList words{call.member()};
        for (const QVariant& argument : call.arguments()) {
            words << argument.toString();
        }
        questions.push_back(words.join(u' ').toStdString());
        waiting_.emplace_back(questions.back(), call);
        if (!hangs) {
            wakeUp();
        }
        return true;
    }
    QString introspect(const QString&) const override { return {}; }

  protected:
    QDBusConnection bus_;

  private:
    void reply(const std::string& question, const QDBusMessage& call) {
        auto found = answers.find(question);
        if (found == answers.end()) {
            found = answers.find(call.member().toStdString());
        }
        if (found == answers.end()) {
            bus_.send(call.createErrorReply(QDBusError::UnknownProperty, "none"));
        } else if (found->second) {
            bus_.send(call.createReply(found->second(call)));
        }
    }

    QString connection_;
    QString name_;
    std::vector<std::pair<std::string, QDBusMessage>> waiting_;
};

}  // namespace ostrel
