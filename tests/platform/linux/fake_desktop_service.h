#pragma once

#include <gtest/gtest.h>

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QStringList>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "platform/linux/private_bus.h"
#include "support/events.h"

namespace ostrel {

// A service that answers what the test says, on a connection of its own: destroying it is its
// death.
class FakeDesktopService : public QDBusVirtualObject {
  public:
    FakeDesktopService(PrivateBus& bus, QString connection, QString name, QString path)
        : connection_(std::move(connection)),
          bus_(bus.connection(connection_)),
          name_(std::move(name)),
          path_(std::move(path)) {
        EXPECT_TRUE(bus_.registerVirtualObject(path_, this));
    }
    FakeDesktopService(const FakeDesktopService&) = delete;
    FakeDesktopService& operator=(const FakeDesktopService&) = delete;
    ~FakeDesktopService() override {
        bus_.unregisterObject(path_);
        QDBusConnection::disconnectFromBus(connection_);
    }

    // Takes the place of one that is there.
    void appear() {
        EXPECT_TRUE(bus_.interface()->registerService(
            name_, QDBusConnectionInterface::ReplaceExistingService,
            QDBusConnectionInterface::AllowReplacement));
    }

    bool handleMessage(const QDBusMessage& call, const QDBusConnection&) override {
        QStringList words{call.member()};
        for (const QVariant& argument : call.arguments()) {
            words << argument.toString();
        }
        questions.push_back(words.join(u' ').toStdString());
        waiting_.push_back(call);
        if (!hangs) {
            wakeUp();
        }
        return true;
    }
    QString introspect(const QString&) const override { return {}; }

    // Answers what it was asked meanwhile.
    void wakeUp() {
        hangs = false;
        std::vector<QDBusMessage> calls = std::exchange(waiting_, {});
        for (std::size_t i = 0; i < calls.size(); ++i) {
            const auto answer = answers.find(questions[questions.size() - calls.size() + i]);
            bus_.send(answer != answers.end()
                          ? calls[i].createReply(answer->second)
                          : calls[i].createErrorReply(QDBusError::UnknownProperty,
                                                      QStringLiteral("there is none")));
        }
    }

    void send(const QString& interface, const QString& member, const QVariantList& arguments) {
        QDBusMessage message = QDBusMessage::createSignal(path_, interface, member);
        message.setArguments(arguments);
        bus_.send(message);
    }

    // By the method and its arguments, in words. Everything else is answered with an error.
    std::map<std::string, QVariantList> answers;
    Events questions;
    bool hangs = false;

  private:
    QString connection_;
    QDBusConnection bus_;
    QString name_;
    QString path_;
    std::vector<QDBusMessage> waiting_;
};

}  // namespace ostrel
