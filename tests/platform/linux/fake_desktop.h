#pragma once

#include <gtest/gtest.h>

#include <QDBusVariant>
#include <QFile>
#include <QString>
#include <memory>
#include <string>

#include "platform/linux/fake_desktop_service.h"

namespace ostrel {

// A notification server and what it keeps its switch for Do Not Disturb in.
class FakeDesktop {
  public:
    enum class Kind { kde, dunst, xfce, gnome, plain };

    FakeDesktop(PrivateBus& bus, Kind kind)
        : server(bus, connection(kind), kService, kPath), kind_(kind), folder_(bus.folder()) {
        server.answers["GetServerInformation"] = informationOf(kind);
        if (kind == Kind::xfce || kind == Kind::gnome) {
            startKeeper(bus);
        }
    }

    void startKeeper(PrivateBus& bus) {
        const bool isXfce = kind_ == Kind::xfce;
        keeper = std::make_unique<FakeDesktopService>(
            bus, connection(kind_) + QStringLiteral(".keeper"),
            isXfce ? kXfconf : QStringLiteral("ca.desrt.dconf"),
            isXfce ? QStringLiteral("/org/xfce/Xfconf")
                   : QStringLiteral("/ca/desrt/dconf/Writer/user"));
        keeper->appear();
    }

    // Answers so from now on, and says nothing.
    void answer(const QVariant& value) {
        const QVariantList wrapped{QVariant::fromValue(QDBusVariant(value))};
        switch (kind_) {
            case Kind::kde:
                server.answers["Get org.freedesktop.Notifications Inhibited"] = wrapped;
                break;
            case Kind::dunst:
                server.answers["Get org.dunstproject.cmd0 paused"] = wrapped;
                break;
            case Kind::xfce:
                keeper->answers["GetProperty xfce4-notifyd /do-not-disturb"] = wrapped;
                break;
            case Kind::gnome:
                write(QStringLiteral("/show-banners"), value.toBool() ? "false" : "true");
                break;
            case Kind::plain:
                break;
        }
    }

    // Says that it may have changed.
    void tell() {
        const QString properties = QStringLiteral("org.freedesktop.DBus.Properties");
        const QString changed = QStringLiteral("PropertiesChanged");
        switch (kind_) {
            case Kind::kde:
                server.send(properties, changed, {kService, QVariantMap(), QStringList()});
                break;
            case Kind::dunst:
                server.send(
                    properties, changed,
                    {QStringLiteral("org.dunstproject.cmd0"), QVariantMap(), QStringList()});
                break;
            case Kind::xfce:
                keeper->send(kXfconf, QStringLiteral("PropertyChanged"),
                             {QStringLiteral("xfce4-notifyd"), QStringLiteral("/do-not-disturb"),
                              QVariant::fromValue(QDBusVariant(true))});
                break;
            case Kind::gnome:
                tellWrite(QStringLiteral("/org/gnome/desktop/notifications/show-banners"), {""});
                break;
            case Kind::plain:
                break;
        }
    }

    void set(bool isOn) {
        answer(isOn);
        tell();
    }

    // Of dconf.
    void tellWrite(const QString& prefix, const QStringList& changes) {
        keeper->send(QStringLiteral("ca.desrt.dconf.Writer"), QStringLiteral("Notify"),
                     {prefix, changes, QStringLiteral("tag")});
    }

    // A program `gsettings` for a bus: it prints what was answered last, after `first` is done, and
    // counts its runs.
    static QString gsettings(PrivateBus& bus, const char* first = "") {
        QString place = bus.folder() + QStringLiteral("/gsettings");
        QFile file(place);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        const QByteArray folder = bus.folder().toUtf8();
        file.write("#!/bin/sh\necho run >>" + folder + "/runs\n" + first +
                   "\n[ \"$*\" = 'get org.gnome.desktop.notifications show-banners' ] || exit 1\n"
                   "cat " +
                   folder + "/show-banners\n");
        file.setPermissions(file.permissions() | QFile::ExeOwner);
        return place;
    }
    [[nodiscard]] static qsizetype runs(PrivateBus& bus) {
        QFile file(bus.folder() + QStringLiteral("/runs"));
        return file.open(QIODevice::ReadOnly) ? file.readAll().count('\n') : 0;
    }

    [[nodiscard]] static QString connection(Kind kind) {
        return QStringLiteral("desktop%1").arg(static_cast<int>(kind));
    }

    FakeDesktopService server;
    std::unique_ptr<FakeDesktopService> keeper;  // xfconf's or dconf's service

    inline static const QString kService = QStringLiteral("org.freedesktop.Notifications");
    inline static const QString kPath = QStringLiteral("/org/freedesktop/Notifications");
    inline static const QString kXfconf = QStringLiteral("org.xfce.Xfconf");

  private:
    static QVariantList informationOf(Kind kind) {
        constexpr const char* kNames[][2] = {{"Plasma", "KDE"},
                                             {"dunst", "knopwob"},
                                             {"Xfce Notify Daemon", "Xfce"},
                                             {"gnome-shell", "GNOME"},
                                             {"plain", "Nobody"}};
        const auto& names = kNames[static_cast<std::size_t>(kind)];
        return {QString::fromLatin1(names[0]), QString::fromLatin1(names[1]), QStringLiteral("1"),
                QStringLiteral("1.2")};
    }
    void write(const QString& name, const char* text) {
        QFile file(folder_ + name);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
        file.write("\n");
    }

    Kind kind_;
    QString folder_;
};

}  // namespace ostrel
