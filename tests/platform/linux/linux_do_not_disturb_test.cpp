#include "platform/linux/linux_do_not_disturb.h"

#include <gtest/gtest.h>

#include <QDBusVariant>
#include <QFile>
#include <memory>
#include <string>

#include "platform/linux/event_loop.h"
#include "platform/linux/fake_bus_service.h"

namespace ostrel {
namespace {

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
    void answer(bool value) {
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
            file.write(value ? "false\n" : "true\n");
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
            keeper->send("/ca/desrt/dconf/Writer/user", "ca.desrt.dconf.Writer", "Notify",
                         {"/org/gnome/desktop/notifications/show-banners", QStringList{""}, "tag"});
        }
    }

    void set(bool isOn) {
        answer(isOn);
        tell();
    }

    // A program `gsettings` for a bus: it prints what was answered last.
    static QString gsettings(PrivateBus& bus) {
        QFile file(bus.folder() + "/gsettings");
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(
            "#!/bin/sh\ncase $* in 'get org.gnome.desktop.notifications show-banners')\n"
            "cat ${0%/*}/show-banners;; esac\n");
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

using Desktop = FakeDesktop::Kind;
using namespace std::chrono_literals;

const QString kClient = "client";
constexpr Desktop kKindsWithSwitch[] = {Desktop::kde, Desktop::dunst, Desktop::xfce,
                                        Desktop::gnome};

struct LinuxDoNotDisturbTest : BusTest {
    Events told;
    std::unique_ptr<LinuxDoNotDisturb> source;
    Subscription hearing;

    void launch() {
        source = std::make_unique<LinuxDoNotDisturb>(bus.connection(kClient),
                                                     FakeDesktop::gsettings(bus));
        hearing = source->announced.subscribe(
            [this](const DistributedAnnouncements::Announcement& announcement) {
                EXPECT_EQ(announcement.name, "com.apple.donotdisturb.notification");
                told.push_back(std::get<bool>(announcement.userInfo.at("active")) ? "on" : "off");
            });
    }

    std::unique_ptr<FakeDesktop> started(Desktop kind, bool isOn) {
        auto desktop = std::make_unique<FakeDesktop>(bus, kind);
        desktop->answer(isOn);
        desktop->server.appear();
        return desktop;
    }

    // Waits for these announcements, since the last time, and has no others.
    [[nodiscard]] Events heard(std::size_t count) {
        static_cast<void>(runUntil([&] { return told.size() >= count; }, 5s));
        bus.settleBoth(kClient, "other");
        return std::exchange(told, {});
    }
};

TEST_F(LinuxDoNotDisturbTest, EveryDesktopsSwitchIsAnnouncedWhenFirstKnownAndWheneverItChanges) {
    for (const Desktop kind : kKindsWithSwitch) {
        for (const bool isFirstOn : {false, true}) {
            SCOPED_TRACE(FakeDesktop::connection(kind).toStdString());
            const auto desktop = started(kind, isFirstOn);
            launch();
            const Events first{isFirstOn ? "on" : "off"};
            const Events second{isFirstOn ? "off" : "on"};
            EXPECT_EQ(told, Events{}) << "nobody waits for an answer";
            EXPECT_EQ(heard(1), first);
            desktop->tell();
            desktop->set(!isFirstOn);
            EXPECT_EQ(heard(1), second);
            desktop->set(isFirstOn);
            EXPECT_EQ(heard(1), first);
        }
    }
}

TEST_F(LinuxDoNotDisturbTest, WithoutASwitchAServerOrABusItIsOff) {
    const LinuxDoNotDisturb nothing(QDBusConnection("none"));
    launch();
    EXPECT_EQ(heard(1), Events{"off"});
    auto plain = started(Desktop::plain, false);
    EXPECT_EQ(heard(0), Events{});
    const auto desktop = started(Desktop::kde, true);
    EXPECT_EQ(heard(1), Events{"on"});
    plain->server.appear();
    EXPECT_EQ(heard(1), Events{"off"});
    desktop->server.appear();
    EXPECT_EQ(heard(1), Events{"on"});
    bus.end();
    EXPECT_TRUE(runUntil([this] { return told == Events{"off"}; }));
}

TEST_F(LinuxDoNotDisturbTest, ADeadServersSwitchAndThatOfAnotherKindDoNotCount) {
    for (const Desktop kind : kKindsWithSwitch) {
        SCOPED_TRACE(FakeDesktop::connection(kind).toStdString());
        auto desktop = started(kind, true);
        launch();
        EXPECT_EQ(heard(1), Events{"on"});
        const auto other = started(kind == Desktop::dunst ? Desktop::kde : Desktop::dunst, false);
        EXPECT_EQ(heard(1), Events{"off"});
        desktop->tell();
        EXPECT_EQ(heard(0), Events{}) << "its settings are still there";
        desktop->server.appear();
        EXPECT_EQ(heard(1), Events{"on"});
        desktop.reset();
        EXPECT_EQ(heard(1), Events{"off"});
    }
}

TEST_F(LinuxDoNotDisturbTest, TheKeeperOfTheSettingsIsNeverStartedAndMayDieAndComeBack) {
    bus.addService(FakeDesktop::kService);
    bus.addService(FakeDesktop::kXfconf);
    launch();
    EXPECT_EQ(heard(1), Events{"off"});
    const auto desktop = started(Desktop::xfce, true);
    EXPECT_EQ(heard(1), Events{"on"});
    desktop->keeper.reset();
    EXPECT_EQ(heard(1), Events{"off"});
    desktop->startKeeper();
    EXPECT_EQ(heard(0), Events{}) << "a setting that nobody has touched";
    desktop->set(true);
    EXPECT_EQ(heard(1), Events{"on"});
    EXPECT_EQ(bus.starts(), 0);
}

TEST_F(LinuxDoNotDisturbTest, AHangingServerHoldsNothingUpAndIsHeardWhenItWakesUp) {
    auto desktop = started(Desktop::kde, true);
    desktop->server.hangs = true;
    launch();
    EXPECT_EQ(heard(0), Events{});
    desktop->server.wakeUp();
    EXPECT_EQ(heard(1), Events{"on"});

    desktop->server.questions.clear();
    desktop->server.hangs = true;
    desktop->set(false);
    for (int time = 0; time < 20; ++time) {
        desktop->tell();
    }
    EXPECT_EQ(heard(0), Events{});
    EXPECT_EQ(desktop->server.questions.size(), 1U) << "nothing piles up at its door";
    desktop->server.wakeUp();  // answers "off"
    desktop->answer(true);
    EXPECT_EQ(heard(2), (Events{"off", "on"})) << "asked again, for it may have changed since";
}

}  // namespace
}  // namespace ostrel
