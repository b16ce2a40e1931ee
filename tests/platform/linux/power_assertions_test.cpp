#include <gtest/gtest.h>

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QDir>
#include <QFile>
#include <QList>

#include "platform/linux/media_players.h"
#include "platform/linux/power_assertions_bench.h"

namespace ostrel {
namespace {

// As the login manager lists them.
struct Inhibitor {
    QString what;
    QString mode;
    quint32 process = 0;
};

[[maybe_unused]] QDBusArgument& operator<<(QDBusArgument& argument, const Inhibitor& inhibitor) {
    argument.beginStructure();
    argument << inhibitor.what << QStringLiteral("who") << QStringLiteral("why") << inhibitor.mode
             << quint32{1000} << inhibitor.process;
    argument.endStructure();
    return argument;
}

[[maybe_unused]] const QDBusArgument& operator>>(const QDBusArgument& argument, Inhibitor&) {
    return argument;
}

using PowerAssertionsTest = PowerAssertionsBench;

struct LoginInhibitorsTest : PowerAssertionsTest {
    std::unique_ptr<FakeBusService> login;
    QList<Inhibitor> inhibitors;

    void appear() {
        qDBusRegisterMetaType<Inhibitor>();
        qDBusRegisterMetaType<QList<Inhibitor>>();
        login = std::make_unique<FakeBusService>(system, QStringLiteral("login"),
                                                 QStringLiteral("org.freedesktop.login1"));
        answerWell();
        login->appear();
    }
    void answerWell() {
        login->answers["ListInhibitors"] = [this](const QDBusMessage&) {
            return QVariantList{QVariant::fromValue(inhibitors)};
        };
    }
    void announce(const char* property) {
        login->tellProperties(QStringLiteral("/org/freedesktop/login1"),
                              QStringLiteral("org.freedesktop.login1.Manager"),
                              {{QLatin1String(property), QStringLiteral("idle")}});
    }
    void settleSystem() {
        for (int step = 0; step < 3; ++step) {
            system.settle(QStringLiteral("login"), QStringLiteral("system-settler"));
            system.settle(QStringLiteral("system-client"), QStringLiteral("system-settler"));
        }
    }
};

TEST_F(LoginInhibitorsTest, ThoseThatBlockIdlenessCountWithTheirAncestors) {
    processes.add(100, {50, 50, 0});
    processes.add(50, {1, 50, 0});
    inhibitors = {{QStringLiteral("sleep:idle"), QStringLiteral("block"), 100},
                  {QStringLiteral("idle"), QStringLiteral("block"), 200},
                  {QStringLiteral("sleep:shutdown"), QStringLiteral("block"), 300},
                  {QStringLiteral("idle"), QStringLiteral("delay"), 400},
                  {QStringLiteral("handle-lid-switch:idleness"), QStringLiteral("block"), 500}};
    appear();
    launch();
    EXPECT_TRUE(becomes({50, 100, 200}));
}

TEST_F(LoginInhibitorsTest, WhoeverStartedAProgramWithAWindowDoesNotCount) {
    processes.add(100, {50, 40, 0});
    processes.add(50, {40, 40, 0});
    processes.add(40, {1, 40, 0});
    inhibitors = {{QStringLiteral("idle"), QStringLiteral("block"), 100}};
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

TEST_F(LoginInhibitorsTest, ItIsAskedWithEachAnswerButNotMoreOftenThanEveryFiveSeconds) {
    appear();
    launch();
    EXPECT_TRUE(runUntil([&] { return login->timesAsked("ListInhibitors") == 1; }));
    settleSystem();
    inhibitors = {{QStringLiteral("idle"), QStringLiteral("block"), 200}};
    EXPECT_EQ(holders(), Holders());
    EXPECT_TRUE(becomes({200}));
    for (const auto& [wait, asked] : {std::pair(4999, 2), std::pair(1, 3)}) {
        loop.runFor(std::chrono::milliseconds(wait));
        EXPECT_EQ(holders(), Holders{200});
        settleSystem();
        EXPECT_EQ(login->timesAsked("ListInhibitors"), asked);
    }
}

TEST_F(LoginInhibitorsTest, ItsAnnouncementsAreFollowedAndItsEndEndsAll) {
    launch();
    EXPECT_EQ(holders(), Holders());
    inhibitors = {{QStringLiteral("idle"), QStringLiteral("block"), 200}};
    appear();
    EXPECT_TRUE(becomes({200})) << "it appears late";
    settleSystem();
    login->answer("ListInhibitors", {QStringList{QStringLiteral("idle")}});
    announce("IdleHint");
    settleSystem();
    EXPECT_EQ(holders(), Holders{200}) << "another property";
    announce("BlockInhibited");
    EXPECT_TRUE(becomes({})) << "an answer without sense";
    answerWell();
    announce("BlockInhibited");
    EXPECT_TRUE(becomes({200}));
    login.reset();
    EXPECT_TRUE(becomes({}));
}

struct SessionManagerTest : PowerAssertionsTest {
    struct Held {
        const char* program = "";
        quint32 flags = 0;
        const char* reason = "Video Wake Lock";
    };
    std::unique_ptr<FakeBusService> manager;
    std::map<QString, Held> held;

    void appear() {
        processes.setExecutable(100, "/usr/lib/chromium/chromium");
        processes.setExecutable(200, "/usr/bin/totem");
        manager = std::make_unique<FakeBusService>(session, QStringLiteral("manager"),
                                                   QStringLiteral("org.gnome.SessionManager"));
        manager->answers["GetInhibitors"] = [this](const QDBusMessage&) {
            QList<QDBusObjectPath> paths;
            for (const auto& [path, inhibitor] : held) {
                paths << QDBusObjectPath(path);
            }
            return QVariantList{QVariant::fromValue(paths)};
        };
        manager->answers["GetFlags"] = [this](const QDBusMessage& call) {
            return QVariantList{held[call.path()].flags};
        };
        manager->answers["GetReason"] = [this](const QDBusMessage& call) {
            return QVariantList{QLatin1String(held[call.path()].reason)};
        };
        manager->answers["GetAppId"] = [this](const QDBusMessage& call) {
            return QVariantList{QLatin1String(held[call.path()].program)};
        };
        manager->appear();
    }
    void announce(const char* signal, const char* path) {
        manager->send(QStringLiteral("/org/gnome/SessionManager"),
                      QStringLiteral("org.gnome.SessionManager"), QLatin1String(signal),
                      {QVariant::fromValue(QDBusObjectPath(QLatin1String(path)))});
    }
    void hold(const char* path, const Held& inhibitor) {
        held[QLatin1String(path)] = inhibitor;
        announce("InhibitorAdded", path);
    }
};

TEST_F(SessionManagerTest, TheProgramsThatKeepTheSessionBusyCountWhileTheyDo) {
    held[QStringLiteral("/i/1")] = {"/usr/lib/chromium/chromium", 8};
    appear();
    launch();
    EXPECT_TRUE(becomes({100})) << "one from before we came";
    hold("/i/2", {"org.gnome.Totem", 12});
    EXPECT_TRUE(becomes({100, 200}));
    announce("InhibitorRemoved", "/i/1");
    EXPECT_TRUE(becomes({200}));
    hold("/i/3", {"/usr/lib/chromium/chromium", 4});
    hold("/i/4", {"unknown", 8});
    hold("/i/5", {"/usr/lib/chromium/chromium", 8, "audio-playing"});
    settle();
    session.settle(QStringLiteral("manager"), QStringLiteral("settler"));
    settle();
    EXPECT_EQ(holders(), Holders{200});
    manager.reset();
    EXPECT_TRUE(becomes({}));
}

TEST_F(SessionManagerTest, SandboxedProgramCountsWithAllItsProcessesHoweverItIsNamed) {
    for (const int process : {300, 301, 302}) {
        processes.write(process, "root/.flatpak-info",
                        process == 302 ? "[Application]\nname=org.example.Other\n"
                                       : "[Application]\nname=org.example.Player\n");
    }
    processes.setExecutable(300, "/usr/bin/xdg-dbus-proxy");
    processes.setExecutable(301, "/app/bin/start");
    appear();
    launch();
    settle();
    for (const char* name : {"xdg-dbus-proxy", "org.example.Player"}) {
        hold("/i/1", {name, 8});
        EXPECT_TRUE(becomes({300, 301})) << name;
        announce("InhibitorRemoved", "/i/1");
        EXPECT_TRUE(becomes({}));
    }
}

TEST(MediaPlayersTest, ADesktopFileTellsWhetherAPlayerIsForVideos) {
    const std::pair<const char*, bool> cases[] = {
        {"[Desktop Entry]\nCategories=AudioVideo;Audio;Video;Player;\n", true},
        {"[Desktop Entry]\nCategories=AudioVideo;Player;\nMimeType=audio/x;video/mp4;\n", true},
        {"[Desktop Entry]\nCategories=AudioVideo;Audio;\nMimeType=video/mp4;\n", false},
        {"[Desktop Entry]\nName=x\n[Desktop Action y]\nCategories=Video;\n", false},
        {"", false},
    };
    for (const auto& [text, expected] : cases) {
        EXPECT_EQ(MediaPlayers::isForVideos(QLatin1String(text)), expected) << text;
    }
}

TEST(MediaPlayersTest, TheNameOfAFileTellsWhetherItIsMusic) {
    const std::pair<const char*, bool> cases[] = {
        {"file:///songs/a%20song.MP3", true},
        {"https://example.org/song.ogg?from=1", true},
        {"https://example.org/watch?v=song.mp3", false},
        {"/songs/Symphony #5.flac", true},
        {"/songs/Why?.mp2", true},
        {"/songs.mp3/film.webm", false},
        {"file:///films/amid", false},
        {"", false},
    };
    for (const auto& [url, expected] : cases) {
        EXPECT_EQ(MediaPlayers::isMusic(QLatin1String(url)), expected) << url;
    }
}

struct MediaPlayersOnBusTest : PowerAssertionsTest {
    TemporaryFolder data;
    QByteArray dataBefore = qgetenv("XDG_DATA_HOME");
    QString status = QStringLiteral("Playing");
    QString url = QStringLiteral("file:///films/a%20film.mkv");

    MediaPlayersOnBusTest() {
        qputenv("XDG_DATA_HOME", data.path().c_str());
        const QString folder = QString::fromStdString(data.path() / "applications");
        QDir().mkpath(folder);
        for (const char* kind : {"Video", "Audio"}) {
            QFile file(folder + QStringLiteral("/ostrel-test-%1.desktop").arg(QLatin1String(kind)));
            EXPECT_TRUE(file.open(QIODevice::WriteOnly));
            file.write(QByteArray("[Desktop Entry]\nCategories=") + kind + ";\n");
        }
    }
    ~MediaPlayersOnBusTest() override {
        dataBefore.isNull() ? qunsetenv("XDG_DATA_HOME") : qputenv("XDG_DATA_HOME", dataBefore);
    }

    std::unique_ptr<FakeBusService> player(const char* name, const QString& desktopEntry) {
        auto service = std::make_unique<FakeBusService>(
            session, QLatin1String(name),
            QStringLiteral("org.mpris.MediaPlayer2.") + QLatin1String(name));
        service->answer("Get", {QVariant::fromValue(QDBusVariant(desktopEntry))});
        service->answers["GetAll"] = [this](const QDBusMessage&) {
            return QVariantList{QVariantMap{{kStatus, status}, {kMetadata, metadata()}}};
        };
        service->appear();
        return service;
    }
    void change(FakeBusService& service, const QVariantMap& changed,
                const QStringList& invalidated = {}) {
        service.tellProperties(QStringLiteral("/org/mpris/MediaPlayer2"),
                               QStringLiteral("org.mpris.MediaPlayer2.Player"), changed,
                               invalidated);
    }

    QVariantMap metadata() const { return {{QStringLiteral("xesam:url"), url}}; }

    const QString kStatus = QStringLiteral("PlaybackStatus");
    const QString kMetadata = QStringLiteral("Metadata");
    const Holders kUs{getpid()};
};

TEST_F(MediaPlayersOnBusTest, AVideoPlayerCountsWhileItPlays) {
    const auto music = player("music", QStringLiteral("ostrel-test-Audio"));
    const auto first = player("first", QStringLiteral("ostrel-test-Video"));
    launch();
    EXPECT_TRUE(becomes(kUs)) << "it was there before us";
    change(*first, {{kStatus, QStringLiteral("Paused")}});
    EXPECT_TRUE(becomes({})) << "the player of music does not count";
    change(*first, {}, {kStatus});
    EXPECT_TRUE(becomes(kUs));
    change(*music, {{kStatus, QStringLiteral("Paused")}});
    session.settle(QStringLiteral("client"), QStringLiteral("music"));
    EXPECT_EQ(holders(), kUs) << "another player's state";
    status = QStringLiteral("Stopped");
    change(*first, {}, {kStatus});
    EXPECT_TRUE(becomes({}));
    status = QStringLiteral("Playing");
    auto second = player("ostrel-test-Video", QString());
    EXPECT_TRUE(becomes(kUs)) << "one that comes later, without a desktop file's name";
    second.reset();
    EXPECT_TRUE(becomes({}));
}

TEST_F(MediaPlayersOnBusTest, AVideoPlayerDoesNotCountWhileItPlaysMusic) {
    url = QStringLiteral("file:///songs/a%20song.MP3");
    const auto both = player("both", QStringLiteral("ostrel-test-Video"));
    launch();
    ASSERT_TRUE(runUntil([&] { return both->timesAsked("GetAll") == 1; }));
    settle();
    EXPECT_EQ(holders(), Holders());
    const QVariantMap music = metadata();
    const QVariantMap film{
        {QStringLiteral("xesam:url"), QStringLiteral("https://example.org/watch?v=song.mp3")}};
    for (const QVariant& other :
         {QVariant(film), QVariant(url), QVariant(7), QVariant(QVariantList{music})}) {
        change(*both, {{kMetadata, other}});
        EXPECT_TRUE(becomes(kUs)) << other.typeName() << ": what makes no sense is no music";
        change(*both, {}, {kMetadata});
        EXPECT_TRUE(becomes({}));
    }
}

TEST_F(MediaPlayersOnBusTest, APlayerThatDoesNotTellItsStateIsHeardLater) {
    const QVariantMap playing{{kStatus, status}};
    const auto refuses = player("refuses", QStringLiteral("ostrel-test-Video"));
    refuses->answers.erase("GetAll");
    launch();
    ASSERT_TRUE(runUntil([&] { return refuses->timesAsked("GetAll") == 1; }));
    settle();
    EXPECT_EQ(holders(), Holders());
    change(*refuses, playing);
    EXPECT_TRUE(becomes(kUs));
    change(*refuses, {}, {kStatus});
    EXPECT_TRUE(becomes({})) << "it may have stopped";

    const auto silent = player("silent", QStringLiteral("ostrel-test-Video"));
    silent->answers["GetAll"] = nullptr;
    ASSERT_TRUE(runUntil([&] { return silent->timesAsked("GetAll") == 1; }));
    change(*silent, playing);
    EXPECT_TRUE(becomes(kUs));
}

TEST_F(PowerAssertionsTest, OnlyWithoutAnyBusItCannotBeTold) {
    const QDBusConnection none(QStringLiteral("none"));
    const QDBusConnection client = session.connection(QStringLiteral("client"));
    const QDBusConnection login = system.connection(QStringLiteral("system-client"));
    const PowerAssertions::ByProcess nobody;
    EXPECT_EQ(LinuxPowerAssertions({none, none, none}, loop, windows).byProcess(), std::nullopt);
    EXPECT_EQ(LinuxPowerAssertions({client, none, none}, loop, windows).byProcess(), nobody);
    EXPECT_EQ(LinuxPowerAssertions({none, none, login}, loop, windows).byProcess(), nobody);
    const LinuxPowerAssertions both({client, session.connection(QStringLiteral("monitor")), login},
                                    loop, windows);
    settle();
    session.end();
    ASSERT_TRUE(runUntil([&] { return !client.isConnected(); }));
    EXPECT_EQ(both.byProcess(), nobody);
    system.end();
    EXPECT_TRUE(runUntil([&] { return !both.byProcess(); }));
}

}  // namespace
}  // namespace ostrel
