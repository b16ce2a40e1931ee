#pragma once

#include <QDBusVariant>
#include <QFile>
#include <memory>

#include "platform/linux/fake_bus_service.h"

namespace ostrel {

// A notification server and what it keeps its switch for Do Not Disturb in.
class FakeDesktop {
  public:
    enum class Kind { kde, dunst, xfce, gnome, plain };

    FakeDesktop(PrivateBus& bus, Kind kind)
        : server(bus, connection(kind), kService), kind_(kind), bus_(bus) {
        constexpr const char* kNames[][2] = {{"Plasma", "KDE"},
                                             {"dunst", "knopwob"},
                                             {"Xfce Notify Daemon", "Xfce"},
                                             {"gnome-shell", "GNOME"},
                                             {"plain", "Nobody"}};
        const auto& [name, vendor] = kNames[static_cast<std::size_t>(kind)];
        server.answer("GetServerInformation", {name, vendor, "1", "1.2"});
        startKeeper();
    }

    void startKeeper() {
        if (kind_ == Kind::xfce || kind_ == Kind::gnome) {
            keeper =
                std::make_unique<FakeBusService>(bus_, connection(kind_) + ".keeper",
                                                 kind_ == Kind::xfce ? kXfconf : "ca.desrt.dconf");
            keeper->appear();
        }
    }

    // Answers so from now on, and says nothing.
    void answer(const QVariant& value) {
        const QVariantList wrapped{QVariant::fromValue(QDBusVariant(value))};
        if (kind_ == Kind::kde) {
            server.answer("Get org.freedesktop.Notifications Inhibited", wrapped);
        } else if (kind_ == Kind::dunst) {
            server.answer("Get org.dunstproject.cmd0 paused", wrapped);
        } else if (kind_ == Kind::xfce) {
            keeper->answer("GetProperty xfce4-notifyd /do-not-disturb", wrapped);
        } else if (kind_ == Kind::gnome) {
            QFile file(bus_.folder() + "/show-banners");
            EXPECT_TRUE(file.open(QIODevice::WriteOnly));
            file.write(value.toBool() ? "false\n" : "true\n");
        }
    }

    // Says that it may have changed.
    void tell() {
        const QString path = "/org/freedesktop/Notifications";
        if (kind_ == Kind::kde) {
            server.tellProperties(path, kService);
        } else if (kind_ == Kind::dunst) {
            server.tellProperties(path, "org.dunstproject.cmd0");
        } else if (kind_ == Kind::xfce) {
            keeper->send(
                "/org/xfce/Xfconf", kXfconf, "PropertyChanged",
                {"xfce4-notifyd", "/do-not-disturb", QVariant::fromValue(QDBusVariant(true))});
        } else if (kind_ == Kind::gnome) {
            tellWrite("/org/gnome/desktop/notifications/show-banners", {""});
        }
    }

    void set(bool isOn) {
        answer(isOn);
        tell();
    }

    // Of dconf.
    void tellWrite(const QString& prefix, const QStringList& changes) {
        keeper->send("/ca/desrt/dconf/Writer/user", "ca.desrt.dconf.Writer", "Notify",
                     {prefix, changes, "tag"});
    }

    // A program `gsettings` for a bus: it prints what was answered last, after `first` is done, and
    // leaves a line in "runs".
    static QString gsettings(PrivateBus& bus, const QByteArray& first = {}) {
        QFile file(bus.folder() + "/gsettings");
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        const QByteArray folder = bus.folder().toUtf8();
        file.write("#!/bin/sh\necho run >>" + folder + "/runs\n" + first +
                   "\n[ \"$*\" = 'get org.gnome.desktop.notifications show-banners' ] || exit 1\n"
                   "cat " +
                   folder + "/show-banners\n");
        file.setPermissions(file.permissions() | QFile::ExeOwner);
        return file.fileName();
    }

    [[nodiscard]] static QString connection(Kind kind) {
        return QString("desktop%1").arg(static_cast<int>(kind));
    }

    FakeBusService server;
    std::unique_ptr<FakeBusService> keeper;  // xfconf's or dconf's service

    inline static const QString kService = "org.freedesktop.Notifications";
    inline static const QString kXfconf = "org.xfce.Xfconf";

  private:
    Kind kind_;
    PrivateBus& bus_;
};

}  // namespace ostrel
