#pragma once

#include <gtest/gtest.h>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QString>
#include <QStringList>
#include <functional>
#include <map>
#include <string>
#include <utility>

namespace ostrel {

// A program on a bus that answers calls on all its paths as the test says, and has its name while
// it lives.
class FakeBusService : public QDBusVirtualObject {
  public:
    using Answer = std::function<QVariantList(const QDBusMessage&)>;

    FakeBusService(QDBusConnection bus, QString name)
        : bus_(std::move(bus)), name_(std::move(name)) {
        bus_.registerVirtualObject(QStringLiteral("/"), this, QDBusConnection::SubPath);
    }
    FakeBusService(const FakeBusService&) = delete;
    FakeBusService& operator=(const FakeBusService&) = delete;
    ~FakeBusService() override {
        disappear();
        bus_.unregisterObject(QStringLiteral("/"));
    }

    void appear() { EXPECT_TRUE(bus_.registerService(name_)); }
    void disappear() { bus_.unregisterService(name_); }

    // By the name of the method; a call of another is answered with an error, one of an empty
    // function with silence.
    std::map<std::string, Answer> answers;

    // The calls of that method so far.
    [[nodiscard]] int calls(const std::string& method) const {
        const auto found = calls_.find(method);
        return found == calls_.end() ? 0 : found->second;
    }

    void announce(const QString& path, const QString& interface, const QString& signal,
                  const QVariantList& arguments) {
        QDBusMessage message = QDBusMessage::createSignal(path, interface, signal);
        message.setArguments(arguments);
        bus_.send(message);
    }

    bool handleMessage(const QDBusMessage& call, const QDBusConnection& connection) override {
        const std::string method = call.member().toStdString();
        ++calls_[method];
        const auto found = answers.find(method);
        if (found != answers.end() && !found->second) {
            return true;
        }
        connection.send(found == answers.end()
                            ? call.createErrorReply(QStringLiteral("org.example.Error"),
                                                    QStringLiteral("no such method"))
                            : call.createReply(found->second(call)));
        return true;
    }
    QString introspect(const QString&) const override { return {}; }

  private:
    QDBusConnection bus_;
    QString name_;
    std::map<std::string, int> calls_;
};

}  // namespace ostrel
