#include "platform/linux/linux_do_not_disturb.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "platform/linux/event_loop.h"
#include "platform/linux/fake_desktop.h"
#include "platform/linux/gnome_banners.h"

namespace ostrel {
namespace {

using Kind = FakeDesktop::Kind;
using namespace std::chrono_literals;

const QString kClient = "client";
constexpr Kind kKindsWithSwitch[] = {Kind::kde, Kind::dunst, Kind::xfce, Kind::gnome};

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
        const QString other = "other";
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

TEST_F(LinuxDoNotDisturbTest, WithoutASwitchAServerOrABusItIsOff) {
    const LinuxDoNotDisturb nothing(QDBusConnection("none"));
    launch();
    EXPECT_EQ(heard(1), Events{"off"});
    auto plain = started(Kind::plain, false);
    EXPECT_EQ(heard(0), Events{});
    const auto desktop = started(Kind::kde, true);
    EXPECT_EQ(heard(1), Events{"on"});
    plain->server.appear();
    EXPECT_EQ(heard(1), Events{"off"});
    desktop->server.appear();
    EXPECT_EQ(heard(1), Events{"on"});
    bus.end();
    EXPECT_TRUE(runUntil([this] { return told == Events{"off"}; }));
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

TEST_F(LinuxDoNotDisturbTest, TheKeeperOfTheSettingsIsNeverStartedAndMayDieAndComeBack) {
    bus.addService(FakeDesktop::kService);
    bus.addService(FakeDesktop::kXfconf);
    launch();
    EXPECT_EQ(heard(1), Events{"off"});
    const auto desktop = started(Kind::xfce, true);
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
    settle();
    const auto next = started(Kind::dunst, false);
    EXPECT_EQ(heard(0), Events{});
    desktop->server.wakeUp();
    EXPECT_EQ(heard(0), Events{}) << "it was replaced meanwhile";
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
    for (const QVariant& nonsense :
         {QVariant(1), QVariant("true"), QVariant(QStringList{"true"})}) {
        desktop->answer(nonsense);
        desktop->tell();
        EXPECT_EQ(heard(1), Events{"off"}) << nonsense.typeName();
        desktop->set(true);
        EXPECT_EQ(heard(1), Events{"on"});
    }
    desktop->server.answer("Get org.freedesktop.Notifications Inhibited", {});
    desktop->tell();
    EXPECT_EQ(heard(1), Events{"off"}) << "an empty answer";
}

struct GnomeBannersTest : LinuxDoNotDisturbTest {
    std::unique_ptr<FakeDesktop> desktop;

    void prepare() override { desktop = std::make_unique<FakeDesktop>(bus, Kind::gnome); }
    [[nodiscard]] qsizetype runs() const { return bus.linesIn("/runs"); }
    [[nodiscard]] static bool runUntilIs(const GnomeBanners& banners, bool isOn) {
        return runUntil([&] { return *banners.isOn() == isOn; });
    }
};

TEST_F(GnomeBannersTest, OnlyAWriteToTheKeyIsReadAgain) {
    desktop->answer(false);
    const GnomeBanners banners(bus.connection(kClient), FakeDesktop::gsettings(bus));
    ASSERT_TRUE(runUntilIs(banners, false));
    const QString folder = "/org/gnome/desktop/notifications/";
    desktop->answer(true);
    desktop->tellWrite(folder, {"show-in-lock-screen"});
    desktop->tellWrite(folder + "show-banners-not", {QString()});
    desktop->tellWrite("/org/gnome/desktop/interface/", {QString()});
    desktop->tellWrite(folder, {});
    settle();
    runFor(20ms);
    EXPECT_EQ(runs(), 1);
    EXPECT_EQ(*banners.isOn(), false);

    const std::pair<QString, QStringList> writes[] = {{folder, {"other", "show-banners"}},
                                                      {"/", {QString()}},
                                                      {folder, {QString()}},
                                                      {folder + "show-banners", {QString()}}};
    bool isOn = false;
    for (const auto& [prefix, changes] : writes) {
        isOn = !isOn;
        desktop->answer(isOn);
        desktop->tellWrite(prefix, changes);
        EXPECT_TRUE(runUntilIs(banners, isOn)) << prefix.toStdString();
    }
    EXPECT_EQ(runs(), 5);
}

TEST_F(GnomeBannersTest, AWriteWhileItIsBeingReadIsReadAfterwards) {
    desktop->answer(false);
    const QString hold = bus.folder() + "/hold";
    const GnomeBanners banners(
        bus.connection(kClient),
        FakeDesktop::gsettings(bus, "while [ -e " + hold.toUtf8() + " ]; do sleep 0.01; done"));
    ASSERT_TRUE(runUntilIs(banners, false));
    ASSERT_TRUE(QFile(hold).open(QIODevice::WriteOnly));
    for (int time = 0; time < 5; ++time) {
        desktop->tell();
    }
    ASSERT_TRUE(runUntil([this] { return runs() == 2; }));
    settle();
    desktop->answer(true);
    QFile::remove(hold);
    EXPECT_TRUE(runUntilIs(banners, true));
    EXPECT_TRUE(runUntil([this] { return runs() == 3; }));
}

}  // namespace
}  // namespace ostrel
