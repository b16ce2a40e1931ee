#include "platform/linux/session_watch.h"

#include <gtest/gtest.h>

#include <QDBusObjectPath>
#include <optional>

#include "platform/api/system_events.h"
#include "platform/linux/event_loop.h"
#include "platform/linux/fake_bus_service.h"

namespace ostrel {
namespace {

const QString kSession = "org.freedesktop.login1.Session";
const QString kSessionPath = "/org/freedesktop/login1/session/_32";

struct SessionWatchTest : BusTest {
    void prepare() override {
        login.emplace(bus, "login", "org.freedesktop.login1");
        login->answer("GetSession", {QVariant::fromValue(QDBusObjectPath(kSessionPath))});
        describe(true, false);
    }
    void describe(bool isActive, bool isLocked) {
        login->answer("GetAll " + kSession.toStdString(),
                      {QVariantMap{{"Active", isActive}, {"LockedHint", isLocked}}});
    }
    void change(bool isActive, bool isLocked) {
        describe(isActive, isLocked);
        login->tellProperties(kSessionPath, kSession);
    }
    void start() {
        login->appear();
        watch.emplace(events, bus.connection("watch"), bus.connection("watch"));
        ASSERT_TRUE(runUntil([this] { return login->timesAsked("GetAll") > 0; }));
        bus.settle("login", "watch");
    }
    [[nodiscard]] bool becomes(bool isOnScreen) {
        return runUntil([&] { return *events.isSessionOnScreen == isOnScreen; });
    }

    std::optional<FakeBusService> login;
    SystemEvents events;
    std::optional<SessionWatch> watch;
};

TEST_F(SessionWatchTest, LockAndAnotherUsersTurnTakeTheScreensAwayWhileTheLoginManagerIsThere) {
    describe(true, true);
    start();
    EXPECT_TRUE(becomes(false)) << "a lock that is there at the start";
    change(true, false);
    EXPECT_TRUE(becomes(true));
    const bool isAtHand[][2] = {{true, true}, {false, false}, {false, true}};
    for (const auto& [isActive, isLocked] : isAtHand) {
        change(isActive, isLocked);
        EXPECT_TRUE(becomes(false));
        change(true, false);
        EXPECT_TRUE(becomes(true));
    }
    for (const char* request : {"Lock", "Unlock"}) {
        login->send(kSessionPath, kSession, request, {});
        EXPECT_TRUE(becomes(request == std::string("Unlock")));
    }
    change(true, true);
    EXPECT_TRUE(becomes(false));
    login.reset();
    EXPECT_TRUE(becomes(true)) << "one that is gone locks nothing";
}

TEST_F(SessionWatchTest, EveryDesktopsScreenSaverCountsOnANewBus) {
    start();
    PrivateBus next;
    watch->adopt(next.connection("next-watch"));
    for (const char* name :
         {"org.gnome.ScreenSaver", "org.freedesktop.ScreenSaver", "org.xfce.ScreenSaver",
          "org.mate.ScreenSaver", "org.cinnamon.ScreenSaver"}) {
        SCOPED_TRACE(name);
        const QString service = name;
        const QString path = u'/' + QString(service).replace(u'.', u'/');
        std::optional<FakeBusService> saver(std::in_place, next, "saver", service);
        saver->answer("GetActive", {true});
        saver->appear();
        EXPECT_TRUE(becomes(false)) << "active when it appears";
        for (const bool isActive : {false, true}) {
            saver->answer("GetActive", {isActive});
            saver->send(path, service, "ActiveChanged", {isActive});
            EXPECT_TRUE(becomes(!isActive));
        }
        saver.reset();
        EXPECT_TRUE(becomes(true)) << "one that died covers nothing";
    }
}

}  // namespace
}  // namespace ostrel
