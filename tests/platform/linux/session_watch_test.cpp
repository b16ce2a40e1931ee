#include "platform/linux/session_watch.h"

#include <gtest/gtest.h>

#include <QDBusObjectPath>
#include <optional>

#include "platform/api/system_events.h"
#include "platform/linux/event_loop.h"
#include "platform/linux/fake_desktop_service.h"

namespace ostrel {
namespace {

const QString kLogin = QStringLiteral("org.freedesktop.login1");
const QString kSession = QStringLiteral("org.freedesktop.login1.Session");
const QString kSessionPath = QStringLiteral("/org/freedesktop/login1/session/_32");
const QString kProperties = QStringLiteral("org.freedesktop.DBus.Properties");

struct SessionWatchTest : ::testing::Test {
    void SetUp() override {
        if (!bus.isThere()) {
            GTEST_SKIP() << "no dbus-daemon to start";
        }
        manager.emplace(bus, QStringLiteral("login"), kLogin,
                        QStringLiteral("/org/freedesktop/login1"));
        session.emplace(bus, QStringLiteral("login"), kLogin, kSessionPath);
        manager->answers["GetSession auto"] = {QVariant::fromValue(QDBusObjectPath(kSessionPath))};
        describe(true, false);
    }
    void describe(bool isActive, bool isLocked) {
        session->answers["GetAll " + kSession.toStdString()] = {QVariantMap{
            {QStringLiteral("Active"), isActive}, {QStringLiteral("LockedHint"), isLocked}}};
    }
    void change(bool isActive, bool isLocked) {
        describe(isActive, isLocked);
        session->send(kProperties, QStringLiteral("PropertiesChanged"),
                      {kSession, QVariantMap(), QStringList()});
    }
    void lock() { session->send(kSession, QStringLiteral("Lock"), {}); }
    void start() {
        manager->appear();
        watch.emplace(events, bus.connection(QStringLiteral("watch")),
                      bus.connection(QStringLiteral("watch")));
        ASSERT_TRUE(runUntil([this] { return !session->questions.empty(); }));
        bus.settle(QStringLiteral("login"), QStringLiteral("watch"));
    }
    [[nodiscard]] bool becomes(bool isOnScreen) {
        return runUntil([&] { return *events.isSessionOnScreen == isOnScreen; });
    }

    PrivateBus bus;
    std::optional<FakeDesktopService> manager;
    std::optional<FakeDesktopService> session;
    SystemEvents events;
    std::optional<SessionWatch> watch;
};

TEST_F(SessionWatchTest, LockAndAnotherUsersTurnTakeTheScreensAway) {
    start();
    EXPECT_TRUE(becomes(true));
    const bool isAtHand[][2] = {{true, true}, {false, false}, {false, true}};
    for (const auto& [isActive, isLocked] : isAtHand) {
        change(isActive, isLocked);
        EXPECT_TRUE(becomes(false));
        change(true, false);
        EXPECT_TRUE(becomes(true));
    }
}

TEST_F(SessionWatchTest, LockThatIsThereAtTheStartCountsUntilTheLoginManagerIsGone) {
    describe(true, true);
    start();
    EXPECT_TRUE(becomes(false));
    session.reset();
    manager.reset();
    EXPECT_TRUE(becomes(true));
}

TEST_F(SessionWatchTest, RequestToLockCountsAtOnceAndUntilItIsTakenBack) {
    start();
    lock();
    EXPECT_TRUE(becomes(false));
    session->send(kSession, QStringLiteral("Unlock"), {});
    EXPECT_TRUE(becomes(true));
}

TEST_F(SessionWatchTest, EveryDesktopsScreenSaverCounts) {
    start();
    for (const char* name :
         {"org.gnome.ScreenSaver", "org.freedesktop.ScreenSaver", "org.xfce.ScreenSaver",
          "org.mate.ScreenSaver", "org.cinnamon.ScreenSaver"}) {
        SCOPED_TRACE(name);
        const QString service = QString::fromLatin1(name);
        std::optional<FakeDesktopService> saver;
        saver.emplace(bus, QStringLiteral("saver"), service,
                      u'/' + QString(service).replace(u'.', u'/'));
        saver->answers["GetActive"] = {true};
        saver->appear();
        EXPECT_TRUE(becomes(false)) << "active when it appears";
        saver->answers["GetActive"] = {false};
        saver->send(service, QStringLiteral("ActiveChanged"), {false});
        EXPECT_TRUE(becomes(true));
        saver->answers["GetActive"] = {true};
        saver->send(service, QStringLiteral("ActiveChanged"), {true});
        EXPECT_TRUE(becomes(false));
        saver.reset();
        EXPECT_TRUE(becomes(true)) << "one that died covers nothing";
    }
}

}  // namespace
}  // namespace ostrel
