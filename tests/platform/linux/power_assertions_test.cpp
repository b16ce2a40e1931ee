#include "platform/linux/linux_power_assertions.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <QDBusArgument>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <memory>
#include <set>

#include "platform/linux/event_loop.h"
#include "platform/linux/fake_bus_service.h"
#include "platform/linux/fake_processes.h"
#include "platform/linux/media_players.h"
#include "platform/virtual/virtual_devices.h"
#include "platform/virtual/virtual_run_loop.h"

namespace ostrel {
namespace {

// LinuxPowerAssertions over a session bus and a system bus of the test's own.
struct PowerAssertionsTest : BusTest {
    using Holders = std::set<std::int64_t>;

    PrivateBus& session = bus;
    PrivateBus system;
    VirtualRunLoop loop{wallTimeAt(0)};
    FakeProcesses processes;
    VirtualScreenWindows windows;
    std::unique_ptr<LinuxPowerAssertions> assertions;
    const Holders kUs{getpid()};

    void TearDown() override { assertions.reset(); }

    void launch() {
        assertions = std::make_unique<LinuxPowerAssertions>(
            LinuxPowerAssertions::Buses{session.connection("client"), session.connection("monitor"),
                                        system.connection("system-client")},
            loop, windows, processes.table());
        // A monitor has no name on the bus.
        const QString monitor = session.connection("monitor").baseService();
        ASSERT_TRUE(runUntil([&] { return !session.hasName(monitor); }));
    }

    [[nodiscard]] Holders holders() const {
        Holders found;
        const auto all = assertions->byProcess();
        for (const auto& [process, types] : all.value()) {
            EXPECT_EQ(types,
                      (PowerAssertions::ByProcess::mapped_type{"PreventUserIdleDisplaySleep"}));
            found.insert(process);
        }
        return found;
    }
    [[nodiscard]] bool becomes(const Holders& expected) const {
        return runUntil([&] { return holders() == expected; });
    }
};

// As the login manager lists them.
struct Inhibitor {
    QString what;
    QString mode;
    quint32 process = 0;
};

[[maybe_unused]] QDBusArgument& operator<<(QDBusArgument& argument, const Inhibitor& inhibitor) {
    argument.beginStructure();
    argument << inhibitor.what << QString("who") << QString("why") << inhibitor.mode
             << quint32{1000} << inhibitor.process;
    argument.endStructure();
    return argument;
}

[[maybe_unused]] const QDBusArgument& operator>>(const QDBusArgument& argument, Inhibitor&) {
    return argument;
}

struct LoginInhibitorsTest : PowerAssertionsTest {
    std::unique_ptr<FakeBusService> login;
    QList<Inhibitor> inhibitors;

    void appear() {
        qDBusRegisterMetaType<Inhibitor>();
        qDBusRegisterMetaType<QList<Inhibitor>>();
        login = std::make_unique<FakeBusService>(system, "login", "org.freedesktop.login1");
        login->answers["ListInhibitors"] = [this](const QDBusMessage&) {
            return QVariantList{QVariant::fromValue(inhibitors)};
        };
        login->appear();
    }
};

TEST_F(LoginInhibitorsTest, ThoseThatBlockIdlenessCountWithTheirAncestorsAndAllOfTheirSandbox) {
    processes.add(100, {50, 50, 0});
    processes.add(50, {1, 50, 0});
    for (const int process : {600, 700, 800}) {
        processes.write(process, "root/.flatpak-info",
                        process == 800 ? "[Application]\nname=org.example.Other\n"
                                       : "[Application]\nname=org.example.Player\n");
    }
    inhibitors = {{"sleep:idle", "block", 100},
                  {"idle", "block", 200},
                  {"sleep:shutdown", "block", 300},
                  {"idle", "delay", 400},
                  {"handle-lid-switch:idleness", "block", 500},
                  {"idle", "block", 600}};
    appear();
    launch();
    EXPECT_TRUE(becomes({50, 100, 200, 600, 700}));
}

TEST_F(LoginInhibitorsTest, WhoeverStartedAProgramWithAWindowDoesNotCount) {
    processes.add(100, {50, 40, 0});
    processes.add(50, {40, 40, 0});
    processes.add(40, {1, 40, 0});
    inhibitors = {{"idle", "block", 100}};
    appear();
    launch();
    ASSERT_TRUE(becomes({40, 50, 100}));
    const std::pair<std::vector<std::int64_t>, Holders> cases[] = {
        {{100, 40}, {100}},      // a player in a window, started by a file manager
        {{50, 40}, {50, 100}},   // one whose window is another process's
        {{40}, {40, 50, 100}}};  // a part of a browser
    for (const auto& [shown, expected] : cases) {
        std::vector<ScreenWindows::Window> list{{std::nullopt, 800, 600}};
        for (const std::int64_t process : shown) {
            list.push_back({process, 800, 600});
        }
        windows.set(list);
        EXPECT_EQ(holders(), expected);
    }
}

TEST_F(LoginInhibitorsTest, ItsAnnouncementsAreFollowedAndItsEndEndsAll) {
    launch();
    EXPECT_EQ(holders(), Holders());
    inhibitors = {{"idle", "block", 200}};
    appear();
    EXPECT_TRUE(becomes({200})) << "it appears late";
    for (const bool isThere : {false, true}) {
        inhibitors = {{isThere ? "idle" : "sleep", "block", 200}};
        login->tellProperties("/org/freedesktop/login1", "org.freedesktop.login1.Manager",
                              {{"BlockInhibited", "idle"}});
        EXPECT_TRUE(becomes(isThere ? Holders{200} : Holders{}));
    }
    inhibitors = {{"idle", "block", 200}, {"idle", "block", 300}};
    loop.runFor(std::chrono::seconds(LinuxPowerAssertions::kAskAgainSec));
    EXPECT_TRUE(becomes({200, 300})) << "one more of a kind, which nobody announces";
    login.reset();
    EXPECT_TRUE(becomes({}));
}

struct SessionManagerTest : PowerAssertionsTest {
    std::unique_ptr<FakeBusService> manager;
    std::map<QString, QVariantMap> held;  // by path, what each method answers

    void appear() {
        processes.setExecutable(100, "/usr/lib/chromium/chromium");
        processes.setExecutable(200, "/usr/bin/totem");
        manager = std::make_unique<FakeBusService>(session, "manager", "org.gnome.SessionManager");
        manager->answers["GetInhibitors"] = [this](const QDBusMessage&) {
            QList<QDBusObjectPath> paths;
            for (const auto& [path, inhibitor] : held) {
                paths << QDBusObjectPath(path);
            }
            return QVariantList{QVariant::fromValue(paths)};
        };
        for (const char* question : {"GetFlags", "GetReason", "GetAppId"}) {
            manager->answers[question] = [this](const QDBusMessage& call) {
                return QVariantList{held[call.path()][call.member()]};
            };
        }
        manager->appear();
    }
    void announce(const char* signal, const char* path) {
        manager->send("/org/gnome/SessionManager", "org.gnome.SessionManager", signal,
                      {QVariant::fromValue(QDBusObjectPath(path))});
    }
    void hold(const char* path, const char* program, quint32 flags,
              const char* reason = "Video Wake Lock") {
        held[path] = {{"GetAppId", program}, {"GetFlags", flags}, {"GetReason", reason}};
        announce("InhibitorAdded", path);
    }
};

TEST_F(SessionManagerTest, TheProgramsThatKeepTheSessionBusyCountWhileTheyDo) {
    appear();
    hold("/i/1", "/usr/lib/chromium/chromium", 8);
    launch();
    EXPECT_TRUE(becomes({100})) << "one from before we came";
    hold("/i/2", "org.gnome.Totem", 12);
    EXPECT_TRUE(becomes({100, 200}));
    announce("InhibitorRemoved", "/i/1");
    EXPECT_TRUE(becomes({200}));
    hold("/i/3", "/usr/lib/chromium/chromium", 4);
    hold("/i/4", "unknown", 8);
    hold("/i/5", "/usr/lib/chromium/chromium", 8, "audio-playing");
    session.settle("manager", "settler");
    session.settleBoth("client", "settler");
    EXPECT_EQ(holders(), Holders{200});
    processes.write(400, "root/.flatpak-info", "[Application]\nname=org.example.Player\n");
    hold("/i/6", "org.example.Player", 8);
    EXPECT_TRUE(becomes({200, 400})) << "in a sandbox it is called by its identifier";
    manager.reset();
    EXPECT_TRUE(becomes({}));
}

TEST(MediaPlayersTest, TheNameOfAFileTellsWhetherItIsAFilm) {
    const std::pair<const char*, bool> cases[] = {
        {"file:///a%20film.MKV", true},        {"https://example.org/a.ogv?from=1", true},
        {"/films/Symphony #5.webm", true},     {"https://example.org/watch?v=a.mkv", false},
        {"https://example.org/stream", false}, {"/a.mkv/song.mp3", false}};
    for (const auto& [name, isFilm] : cases) {
        EXPECT_EQ(MediaPlayers::isFilm(name), isFilm) << name;
    }
}

struct MediaPlayersOnBusTest : PowerAssertionsTest {
    TemporaryFolder data;
    QString status = "Playing";

    MediaPlayersOnBusTest() {
        qputenv("XDG_DATA_HOME", data.path().c_str());
        std::filesystem::create_directory(data.path() / "applications");
        std::ofstream(data.path() / "applications/films.desktop")
            << "[Desktop Entry]\nCategories=AudioVideo;Audio;Video;\n";
        std::ofstream(data.path() / "applications/songs.desktop")
            << "[Desktop Entry]\nCategories=AudioVideo;Audio;\n";
    }

    std::unique_ptr<FakeBusService> player(const char* name, const QString& desktopEntry) {
        auto service = std::make_unique<FakeBusService>(session, name,
                                                        QString("org.mpris.MediaPlayer2.") + name);
        service->answer("Get", {QVariant::fromValue(QDBusVariant(desktopEntry))});
        service->answers["GetAll"] = [this](const QDBusMessage&) {
            return QVariantList{QVariantMap{{kStatus, status}, {kMetadata, kFilm}}};
        };
        service->appear();
        return service;
    }
    void change(FakeBusService& service, const QVariantMap& changed,
                const QStringList& invalidated = {}) {
        service.tellProperties("/org/mpris/MediaPlayer2", "org.mpris.MediaPlayer2.Player", changed,
                               invalidated);
    }

    const QString kStatus = "PlaybackStatus";
    const QString kMetadata = "Metadata";
    const QVariantMap kFilm{{"xesam:url", "file:///films/a%20film.mkv"}};
};

TEST_F(MediaPlayersOnBusTest, AVideoPlayerCountsWhileItPlays) {
    const auto music = player("music", "songs");
    const auto first = player("first", "films");
    launch();
    EXPECT_TRUE(becomes(kUs)) << "it was there before us";
    change(*first, {{kStatus, "Paused"}});
    EXPECT_TRUE(becomes({})) << "the player of music does not count";
    change(*first, {}, {kStatus});
    EXPECT_TRUE(becomes(kUs));
    status = "Stopped";
    change(*first, {}, {kStatus});
    EXPECT_TRUE(becomes({}));
    status = "Playing";
    auto second = player("films", QString());
    EXPECT_TRUE(becomes(kUs)) << "one that comes later, without a desktop file's name";
    second.reset();
    EXPECT_TRUE(becomes({}));
}

TEST_F(MediaPlayersOnBusTest, AVideoPlayerDoesNotCountWhileItPlaysMusic) {
    const auto both = player("both", "films");
    launch();
    const QVariant others[] = {QVariantMap{{"xesam:url", "file:///songs/a%20song.MP3"}}, 7,
                               QVariantList{kFilm}};
    for (const QVariant& other : others) {
        EXPECT_TRUE(becomes(kUs));
        change(*both, {{kMetadata, other}});
        EXPECT_TRUE(becomes({})) << other.typeName() << ": what makes no sense is no film";
        change(*both, {{kMetadata, kFilm}});
    }
}

const QString kSaver = "org.freedesktop.ScreenSaver";

struct ScreenSaverCallsTest : PowerAssertionsTest {
    std::unique_ptr<FakeBusService> saver;

    void appear() {
        saver = std::make_unique<FakeBusService>(session, "saver", kSaver);
        saver->answer("Inhibit", {7U});
        saver->answer("UnInhibit", {});
        saver->appear();
    }
    // The caller is this process.
    void call(const char* method, const QVariantList& arguments,
              const char* path = "/org/freedesktop/ScreenSaver") {
        QDBusMessage message = QDBusMessage::createMethodCall(kSaver, path, kSaver, method);
        message.setArguments(arguments);
        session.connection(kPlayer).send(message);
    }
    void inhibit(const char* reason) { call("Inhibit", {"player", reason}); }
    void release() { call("UnInhibit", {7U}); }

    const QString kPlayer = "player";
};

TEST_F(ScreenSaverCallsTest, APlayerCountsUntilItHasLetGoAsOftenAsItHeldOrEitherHasLeftTheBus) {
    appear();
    launch();
    call("Inhibit", {"player", "film"}, "/ScreenSaver");
    EXPECT_TRUE(becomes(kUs));
    inhibit("audio-playing");
    release();
    ASSERT_TRUE(runUntil([&] { return saver->timesAsked("UnInhibit") == 1; }));
    session.settleBoth("client", "settler");
    EXPECT_EQ(holders(), kUs) << "the sound ends before the picture";
    inhibit("audio-playing");
    release();
    release();
    EXPECT_TRUE(becomes({}));
    release();
    inhibit("film");
    EXPECT_TRUE(becomes(kUs)) << "one release too many is none for the next";
    QDBusConnection::disconnectFromBus(kPlayer);
    EXPECT_TRUE(becomes({}));
    call("Inhibit", {7, "odd"});
    inhibit("film");
    EXPECT_TRUE(becomes(kUs));
    saver.reset();
    EXPECT_TRUE(becomes({}));
}

}  // namespace
}  // namespace ostrel
