#include "platform/linux/linux_do_not_disturb.h"

#include <gtest/gtest.h>

#include <QDBusVariant>
#include <QFile>
#include <memory>
#include <string>

#include "platform/linux/event_loop.h"
#include "platform/linux/fake_desktop.h"
#include "platform/linux/gnome_banners.h"

namespace ostrel {
namespace {

using Kind = FakeDesktop::Kind;
using namespace std::chrono_literals;

const QString kClient = QStringLiteral("client");
constexpr Kind kKindsWithSwitch[] = {Kind::kde, Kind::dunst, Kind::xfce, Kind::gnome};

std::string written(const DistributedAnnouncements::Announcement& announcement) {
    const auto active = announcement.userInfo.find("active");
    const bool* isOn = active != announcement.userInfo.end() && announcement.userInfo.size() == 1
                           ? std::get_if<bool>(&active->second)
                           : nullptr;
    if (announcement.name != "com.apple.donotdisturb.notification" || isOn == nullptr) {
        return "nonsense";
    }
    return *isOn ? "on" : "off";
}

struct LinuxDoNotDisturbTest : ::testing::Test {
    PrivateBus bus;
    Events told;
    std::unique_ptr<LinuxDoNotDisturb> source;
    Subscription hearing;

    void SetUp() override {
        if (!bus.isThere()) {
            GTEST_SKIP() << "no dbus-daemon to start";
        }
    }

    void launch() {
        source = std::make_unique<LinuxDoNotDisturb>(bus.connection(kClient),
                                                     FakeDesktop::gsettings(bus));
        hearing = source->announced.subscribe(
            [this](const DistributedAnnouncements::Announcement& announcement) {
                told.push_back(written(announcement));
            });
    }

    std::unique_ptr<FakeDesktop> started(Kind kind, bool isOn) {
        auto desktop = std::make_unique<FakeDesktop>(bus, kind);
        desktop->answer(isOn);
        desktop->server.appear();
        return desktop;
    }

    // Waits for these announcements, since the last time, and has no others.
    [[nodiscard]] Events heard(std::size_t count) {
        static_cast<void>(runUntil([&] { return told.size() >= count; }, 5s));
        settle();
        return std::exchange(told, {});
    }

    // Whatever is on its way, an answer to an answer included, has arrived.
    void settle() {
        const QString other = QStringLiteral("other");
        for (int turn = 0; turn < 6; ++turn) {
            bus.settle(kClient, other);
            bus.settle(other, kClient);
        }
    }
};

TEST_F(LinuxDoNotDisturbTest, EveryDesktopsSwitchIsAnnouncedWhenFirstKnownAndWheneverItChanges) {
    for (const Kind kind : kKindsWithSwitch) {
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

TEST_F(LinuxDoNotDisturbTest, WithoutASwitchOrAServerItIsOffUntilOneComes) {
    launch();
    EXPECT_EQ(heard(1), Events{"off"});
    auto plain = started(Kind::plain, false);
    EXPECT_EQ(heard(0), Events{});
    const auto desktop = started(Kind::kde, true);
    EXPECT_EQ(heard(1), Events{"on"});
    plain->server.appear();
    EXPECT_EQ(heard(1), Events{"off"});
}

TEST_F(LinuxDoNotDisturbTest, ADeadServersSwitchAndThatOfAnotherKindDoNotCount) {
    for (const Kind kind : kKindsWithSwitch) {
        SCOPED_TRACE(FakeDesktop::connection(kind).toStdString());
        auto desktop = started(kind, true);
        launch();
        EXPECT_EQ(heard(1), Events{"on"});
        const auto other = started(kind == Kind::dunst ? Kind::kde : Kind::dunst, false);
        EXPECT_EQ(heard(1), Events{"off"});
        desktop->tell();
        EXPECT_EQ(heard(0), Events{}) << "its settings are still there";
        desktop->server.appear();
        EXPECT_EQ(heard(1), Events{"on"});
        desktop.reset();
        EXPECT_EQ(heard(1), Events{"off"});
    }
}

TEST_F(LinuxDoNotDisturbTest, TheKeeperOfTheSettingsMayDieAndComeBack) {
    const auto desktop = started(Kind::xfce, true);
    launch();
    EXPECT_EQ(heard(1), Events{"on"});
    desktop->keeper.reset();
    EXPECT_EQ(heard(1), Events{"off"});
    desktop->startKeeper(bus);
    EXPECT_EQ(heard(0), Events{}) << "a setting that nobody has touched";
    desktop->answer(true);
    desktop->keeper->send(FakeDesktop::kXfconf, QStringLiteral("PropertyChanged"),
                          {QStringLiteral("xfce4-panel"), QStringLiteral("/do-not-disturb"),
                           QVariant::fromValue(QDBusVariant(true))});
    EXPECT_EQ(heard(0), Events{}) << "not the channel";
    desktop->tell();
    EXPECT_EQ(heard(1), Events{"on"});
    desktop->keeper->answers.clear();
    desktop->keeper->send(FakeDesktop::kXfconf, QStringLiteral("PropertyRemoved"),
                          {QStringLiteral("xfce4-notifyd"), QStringLiteral("/do-not-disturb")});
    EXPECT_EQ(heard(1), Events{"off"});
}

TEST_F(LinuxDoNotDisturbTest, AHangingServerHoldsNothingUpAndIsHeardWhenItWakesUp) {
    auto desktop = started(Kind::kde, true);
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
    desktop->server.wakeUp();
    EXPECT_EQ(heard(1), Events{"off"});

    desktop->server.hangs = true;
    desktop->set(true);
    const auto next = started(Kind::dunst, true);
    EXPECT_EQ(heard(1), Events{"on"}) << "of the one that took its place";
    desktop.reset();
    EXPECT_EQ(heard(0), Events{});
}

TEST_F(LinuxDoNotDisturbTest, WhatAServerSaysAfterItWasReplacedDoesNotCount) {
    const auto desktop = started(Kind::gnome, true);
    desktop->server.hangs = true;
    launch();
    settle();
    const auto next = started(Kind::kde, false);
    EXPECT_EQ(heard(1), Events{"off"});
    desktop->server.wakeUp();
    EXPECT_EQ(heard(0), Events{});
    next->set(true);
    EXPECT_EQ(heard(1), Events{"on"});
}

TEST_F(LinuxDoNotDisturbTest, AnErrorOfTheBusInPlaceOfTheServiceIsNoAnswer) {
    BusQuestion question(bus.connection(kClient), {FakeDesktop::kService,
                                                   FakeDesktop::kPath,
                                                   FakeDesktop::kService,
                                                   QStringLiteral("Anything"),
                                                   {}});
    int answers = 0;
    const Subscription counting =
        question.answered.subscribe([&answers](const QDBusMessage&) { ++answers; });
    EXPECT_TRUE(runUntil([&] { return answers == 1; }));
    EXPECT_FALSE(question.isAnswered());
    const auto desktop = started(Kind::plain, false);
    EXPECT_TRUE(runUntil([&] { return question.isAnswered(); })) << "be it with an error";
    EXPECT_EQ(answers, 3);
}

TEST_F(LinuxDoNotDisturbTest, AChangeWhileTheAnswerIsOnItsWayIsAskedForAgain) {
    const auto desktop = started(Kind::dunst, false);
    launch();
    EXPECT_EQ(heard(1), Events{"off"});
    desktop->server.hangs = true;
    desktop->tell();
    desktop->tell();
    settle();
    desktop->server.wakeUp();  // answers "off"
    desktop->answer(true);
    EXPECT_EQ(heard(1), Events{"on"});
}

TEST_F(LinuxDoNotDisturbTest, NonsenseIsTakenForOff) {
    const auto desktop = started(Kind::kde, true);
    launch();
    EXPECT_EQ(heard(1), Events{"on"});
    const QVariant wrapped = QVariant::fromValue(QDBusVariant(true));
    for (const QVariant& nonsense :
         {QVariant(1), QVariant(QStringLiteral("true")), QVariant(QStringList{"true"}),
          QVariant(QVariantMap{{QStringLiteral("true"), true}})}) {
        desktop->answer(nonsense);
        desktop->tell();
        EXPECT_EQ(heard(1), Events{"off"}) << nonsense.typeName();
        desktop->answer(wrapped);
        desktop->tell();
        EXPECT_EQ(heard(1), Events{"on"});
    }
    desktop->server.answers["Get org.freedesktop.Notifications Inhibited"] = {};
    desktop->tell();
    EXPECT_EQ(heard(1), Events{"off"}) << "an empty answer";

    const auto silent = started(Kind::dunst, true);
    EXPECT_EQ(heard(1), Events{"on"});
    for (const QVariantList& information :
         {QVariantList{}, QVariantList{7}, QVariantList{QStringLiteral("gnome-shell")}}) {
        silent->server.answers["GetServerInformation"] = information;
        desktop->server.appear();
        silent->server.appear();
        EXPECT_EQ(heard(2), (Events{"off", "on"})) << "a server that does not say what it is";
    }
}

TEST_F(LinuxDoNotDisturbTest, StrangersAndOtherSettingsAreNotListenedTo) {
    const auto desktop = started(Kind::kde, false);
    launch();
    EXPECT_EQ(heard(1), Events{"off"});
    FakeDesktopService stranger(bus, QStringLiteral("stranger"), QStringLiteral("a.stranger"),
                                FakeDesktop::kPath);
    desktop->server.questions.clear();
    desktop->answer(true);
    const QString properties = QStringLiteral("org.freedesktop.DBus.Properties");
    const QString changed = QStringLiteral("PropertiesChanged");
    stranger.send(properties, changed, {FakeDesktop::kService, QVariantMap(), QStringList()});
    desktop->server.send(properties, changed,
                         {QStringLiteral("another.interface"), QVariantMap(), QStringList()});
    desktop->server.send(properties, changed, {});
    EXPECT_EQ(heard(0), Events{});
    EXPECT_EQ(desktop->server.questions, Events{});
}

TEST_F(LinuxDoNotDisturbTest, NoServiceIsEverStarted) {
    const QString starts = bus.folder() + QStringLiteral("/starts");
    const QString script = bus.folder() + QStringLiteral("/script");
    QFile file(script);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("#!/bin/sh\necho start >>" + starts.toUtf8() + "\n");
    file.setPermissions(file.permissions() | QFile::ExeOwner);
    file.close();
    for (const QString& name : {FakeDesktop::kService, FakeDesktop::kXfconf}) {
        bus.addService(name, script);
    }
    launch();
    EXPECT_EQ(heard(1), Events{"off"});
    auto desktop = started(Kind::xfce, true);
    EXPECT_EQ(heard(1), Events{"on"});
    desktop->keeper.reset();
    EXPECT_EQ(heard(1), Events{"off"});
    desktop.reset();
    EXPECT_EQ(heard(0), Events{});
    runFor(50ms);
    EXPECT_FALSE(QFile::exists(starts));
}

TEST_F(LinuxDoNotDisturbTest, WithoutABusItIsOff) {
    const LinuxDoNotDisturb nothing(QDBusConnection(QStringLiteral("none")));
    const auto desktop = started(Kind::dunst, true);
    launch();
    EXPECT_EQ(heard(1), Events{"on"});
    bus.end();
    EXPECT_TRUE(runUntil([this] { return told == Events{"off"}; }));
}

struct GnomeBannersTest : LinuxDoNotDisturbTest {
    std::unique_ptr<FakeDesktop> desktop;

    void SetUp() override {
        LinuxDoNotDisturbTest::SetUp();
        if (bus.isThere()) {
            desktop = std::make_unique<FakeDesktop>(bus, Kind::gnome);
        }
    }

    [[nodiscard]] static bool runUntilIs(const GnomeBanners& banners, bool isOn) {
        return runUntil([&] { return *banners.isOn() == isOn; });
    }
};

TEST_F(GnomeBannersTest, OnlyAWriteToTheKeyIsReadAgain) {
    desktop->answer(false);
    const GnomeBanners banners(bus.connection(kClient), FakeDesktop::gsettings(bus));
    ASSERT_TRUE(runUntilIs(banners, false));
    const QString folder = QStringLiteral("/org/gnome/desktop/notifications/");
    desktop->answer(true);
    desktop->tellWrite(folder, {QStringLiteral("show-in-lock-screen")});
    desktop->tellWrite(folder + QStringLiteral("show-banners-not"), {QString()});
    desktop->tellWrite(folder + QStringLiteral("show"), {QString()});
    desktop->tellWrite(QStringLiteral("/org/gnome/desktop/interface/"), {QString()});
    desktop->tellWrite(folder, {});
    desktop->keeper->send(QStringLiteral("ca.desrt.dconf.Writer"), QStringLiteral("Notify"), {7});
    settle();
    runFor(20ms);
    EXPECT_EQ(FakeDesktop::runs(bus), 1);
    EXPECT_EQ(*banners.isOn(), false);

    struct Write {
        QString prefix;
        QStringList changes;
    };
    bool isOn = false;
    for (const Write& write :
         {Write{folder, {QStringLiteral("other"), QStringLiteral("show-banners")}},
          Write{QStringLiteral("/"), {QString()}}, Write{folder, {QString()}},
          Write{folder + QStringLiteral("show-banners"), {QString()}}}) {
        isOn = !isOn;
        desktop->answer(isOn);
        desktop->tellWrite(write.prefix, write.changes);
        EXPECT_TRUE(runUntilIs(banners, isOn)) << write.prefix.toStdString();
    }
    EXPECT_EQ(FakeDesktop::runs(bus), 5);
}

TEST_F(GnomeBannersTest, AWriteWhileItIsBeingReadIsReadAfterwards) {
    desktop->answer(false);
    const QString hold = bus.folder() + QStringLiteral("/hold");
    const QByteArray waiting = "while [ -e " + hold.toUtf8() + " ]; do sleep 0.01; done";
    const QString script = FakeDesktop::gsettings(bus, waiting.constData());
    const GnomeBanners banners(bus.connection(kClient), script);
    ASSERT_TRUE(runUntilIs(banners, false));
    {
        QFile file(hold);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    }
    for (int time = 0; time < 5; ++time) {
        desktop->tell();
    }
    ASSERT_TRUE(runUntil([this] { return FakeDesktop::runs(bus) == 2; }));
    settle();
    desktop->answer(true);
    QFile::remove(hold);
    EXPECT_TRUE(runUntilIs(banners, true));
    EXPECT_TRUE(runUntil([this] { return FakeDesktop::runs(bus) == 3; }));
    settle();
    runFor(20ms);
    EXPECT_EQ(FakeDesktop::runs(bus), 3);
}

TEST_F(GnomeBannersTest, WhatCannotBeReadIsOff) {
    desktop->answer(true);
    const QString readable = FakeDesktop::gsettings(bus);
    GnomeBanners banners(bus.connection(kClient), readable, 500ms);
    for (const char* trouble :
         {"exit 1", "echo false; exit 1", "kill -9 $$", "echo nonsense", "exec sleep 1000"}) {
        FakeDesktop::gsettings(bus);
        desktop->tell();
        ASSERT_TRUE(runUntilIs(banners, true));
        FakeDesktop::gsettings(bus, trouble);
        desktop->tell();
        EXPECT_TRUE(runUntilIs(banners, false)) << trouble;
    }
    QFile::remove(readable);
    desktop->tell();
    settle();
    FakeDesktop::gsettings(bus);
    desktop->tell();
    EXPECT_TRUE(runUntilIs(banners, true)) << "installed meanwhile";
    QFile::remove(readable);
    desktop->tell();
    EXPECT_TRUE(runUntilIs(banners, false)) << "there is none";
}

TEST_F(GnomeBannersTest, AReadingThatIsUnderWayEndsWithItsOwner) {
    const QString script = FakeDesktop::gsettings(bus, "echo $$ >\"$0.pid\"; exec sleep 1000");
    auto banners = std::make_unique<GnomeBanners>(bus.connection(kClient), script);
    QFile file(script + QStringLiteral(".pid"));
    ASSERT_TRUE(runUntil([&] { return file.exists() && file.size() > 0; }));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QString process = QStringLiteral("/proc/") + QString::fromUtf8(file.readAll().trimmed());
    ASSERT_TRUE(QFile::exists(process));
    banners.reset();
    EXPECT_FALSE(QFile::exists(process));
}

}  // namespace
}  // namespace ostrel
