#pragma once

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QFile>
#include <QProcess>
#include <QStringList>

#include "platform/linux/temporary_folder.h"

namespace ostrel {

// A session bus of the test's own, on which no service starts by itself but those of addService().
class PrivateBus {
  public:
    PrivateBus() {
        const QString file = QString::fromStdString(folder_.path() / "bus.conf");
        write(file,
              QStringLiteral("<busconfig><type>session</type><listen>unix:tmpdir=/tmp</listen>"
                             "<servicedir>%1</servicedir>"
                             "<policy context=\"default\"><allow send_destination=\"*\""
                             " eavesdrop=\"true\"/><allow eavesdrop=\"true\"/>"
                             "<allow own=\"*\"/></policy></busconfig>")
                  .arg(folder()));
        daemon_.start(QStringLiteral("dbus-daemon"),
                      {QStringLiteral("--config-file=") + file, QStringLiteral("--nofork"),
                       QStringLiteral("--print-address")});
        if (daemon_.waitForStarted() && daemon_.waitForReadyRead()) {
            address_ = QString::fromLatin1(daemon_.readLine()).trimmed();
        }
    }
    PrivateBus(const PrivateBus&) = delete;
    PrivateBus& operator=(const PrivateBus&) = delete;
    ~PrivateBus() {
        for (const QString& name : names_) {
            QDBusConnection::disconnectFromBus(name);
        }
        end();
    }

    [[nodiscard]] bool isThere() const { return !address_.isEmpty(); }

    [[nodiscard]] QString address() const { return address_; }

    // The connection of that name, a new one if need be.
    [[nodiscard]] QDBusConnection connection(const QString& name) {
        names_.push_back(name);
        return QDBusConnection::connectToBus(address_, name);
    }

    // The bus starts a script for whoever calls `service`, which keeps count and fails.
    void addService(const QString& service) {
        const QString script = folder() + QStringLiteral("/script");
        write(script,
              QStringLiteral("#!/bin/sh\necho start >>'%1/starts'\nexit 1\n").arg(folder()));
        QFile::setPermissions(script, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        write(folder() + u'/' + service + QStringLiteral(".service"),
              QStringLiteral("[D-BUS Service]\nName=%1\nExec=%2\n").arg(service, script));
        EXPECT_EQ(ask(QStringLiteral("ReloadConfig")).type(), QDBusMessage::ReplyMessage);
    }
    [[nodiscard]] qsizetype starts() const {
        QFile file(folder() + QStringLiteral("/starts"));
        return file.open(QIODevice::ReadOnly) ? file.readAll().count('\n') : 0;
    }

    [[nodiscard]] bool hasName(const QString& name) {
        return ask(QStringLiteral("NameHasOwner"), {name}).arguments().value(0).toBool();
    }

    // Everything that `from` has sent to `to` has arrived.
    void settle(const QString& to, const QString& from) {
        const QDBusMessage ping = QDBusMessage::createMethodCall(
            connection(to).baseService(), QStringLiteral("/"),
            QStringLiteral("org.freedesktop.DBus.Peer"), QStringLiteral("Ping"));
        EXPECT_EQ(connection(from).call(ping).type(), QDBusMessage::ReplyMessage);
        QCoreApplication::processEvents();
    }
    // Likewise both ways, answers to answers included.
    void settleBoth(const QString& one, const QString& other) {
        for (int round = 0; round < 6; ++round) {
            settle(one, other);
            settle(other, one);
        }
    }

    // Everybody loses the bus.
    void end() {
        daemon_.kill();
        daemon_.waitForFinished();
    }

    [[nodiscard]] QString folder() const { return QString::fromStdString(folder_.path()); }

  private:
    QDBusMessage ask(const QString& member, const QVariantList& arguments = {}) {
        const QString bus = QStringLiteral("org.freedesktop.DBus");
        QDBusMessage question =
            QDBusMessage::createMethodCall(bus, QStringLiteral("/"), bus, member);
        question.setArguments(arguments);
        return connection(QStringLiteral("asking")).call(question);
    }
    static void write(const QString& path, const QString& text) {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text.toUtf8());
    }

    TemporaryFolder folder_;
    QProcess daemon_;
    QString address_;
    QStringList names_;
};

struct BusTest : ::testing::Test {
    PrivateBus bus;

    void SetUp() final {
        if (!bus.isThere()) {
            GTEST_SKIP() << "no dbus-daemon to start";
        }
        prepare();
    }
    virtual void prepare() {}
};

}  // namespace ostrel
