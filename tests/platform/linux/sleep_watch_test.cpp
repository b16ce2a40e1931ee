#include "platform/linux/sleep_watch.h"

#include <gtest/gtest.h>
#include <poll.h>
#include <unistd.h>

#include <QDBusVirtualObject>
#include <array>
#include <optional>

#include "platform/api/system_events.h"
#include "platform/linux/event_loop.h"
#include "platform/linux/linux_clock.h"
#include "platform/linux/linux_run_loop.h"
#include "platform/linux/private_bus.h"
#include "support/events.h"

namespace ostrel {
namespace {

const QString kService = QStringLiteral("org.freedesktop.login1");
const QString kPath = QStringLiteral("/org/freedesktop/login1");

// Gives out locks, as the login manager does: one end of a pipe, closed when the lock is let go.
class LoginManager : public QDBusVirtualObject {
  public:
    explicit LoginManager(QDBusConnection bus) : bus_(std::move(bus)) {
        bus_.registerVirtualObject(kPath, this);
        EXPECT_TRUE(bus_.registerService(kService));
    }
    LoginManager(const LoginManager&) = delete;
    LoginManager& operator=(const LoginManager&) = delete;
    ~LoginManager() override {
        bus_.unregisterService(kService);
        bus_.unregisterObject(kPath);
        close(ourEnd_);
    }

    bool handleMessage(const QDBusMessage& call, const QDBusConnection& connection) override {
        if (call.member() != QStringLiteral("Inhibit")) {
            return false;
        }
        asked.push_back(call.arguments()[0].toString().toStdString() + " " +
                        call.arguments()[3].toString().toStdString());
        std::array<int, 2> ends{};
        EXPECT_EQ(pipe(ends.data()), 0);
        close(ourEnd_);
        ourEnd_ = ends[0];
        connection.send(call.createReply(QVariant::fromValue(QDBusUnixFileDescriptor(ends[1]))));
        close(ends[1]);
        return true;
    }
    QString introspect(const QString&) const override { return {}; }

    [[nodiscard]] bool isLockHeld() const {
        pollfd end{ourEnd_, POLLIN, 0};
        return ourEnd_ >= 0 && ::poll(&end, 1, 0) == 0;
    }
    void announce(bool isAboutToSleep) {
        QDBusMessage signal =
            QDBusMessage::createSignal(kPath, QStringLiteral("org.freedesktop.login1.Manager"),
                                       QStringLiteral("PrepareForSleep"));
        signal << isAboutToSleep;
        bus_.send(signal);
    }

    Events asked;

  private:
    QDBusConnection bus_;
    int ourEnd_ = -1;
};

struct SleepWatchTest : ::testing::Test {
    void SetUp() override {
        if (!bus.isThere()) {
            GTEST_SKIP() << "no dbus-daemon to start";
        }
        observers.push_back(events.willSleep.subscribe([this] {
            told.push_back(manager && manager->isLockHeld() ? "sleep, held back" : "sleep");
        }));
        observers.push_back(events.didWake.subscribe([this] {
            told.push_back("wake " + (events.sleptSec ? std::to_string(*events.sleptSec) : ""));
        }));
    }
    void appear() { manager.emplace(bus.connection(QStringLiteral("manager"))); }
    void watch() {
        sleepWatch.emplace(events, runLoop, bus.connection(QStringLiteral("client")),
                           [this] { return asleepSec; });
    }

    PrivateBus bus;
    LinuxRunLoop runLoop{systemWallTime};
    SystemEvents events;
    double asleepSec = 50;
    Events told;
    std::vector<Subscription> observers;
    std::optional<LoginManager> manager;
    std::optional<SleepWatch> sleepWatch;
};

TEST_F(SleepWatchTest, SleepWaitsUntilItWasToldAndTheNextOneAgain) {
    appear();
    watch();
    for (const std::size_t sleeps : {1U, 2U}) {
        ASSERT_TRUE(runUntil([&] { return manager->isLockHeld(); }));
        manager->announce(true);
        EXPECT_TRUE(runUntil([&] { return !manager->isLockHeld(); }));
        asleepSec += 1000;
        runLoop.handleClockChange();
        manager->announce(false);
        EXPECT_TRUE(runUntil([&] { return manager->asked.size() == sleeps + 1; }));
    }
    EXPECT_EQ(told, (Events{"sleep, held back", "wake ", "sleep, held back", "wake "}));
    EXPECT_EQ(manager->asked.front(), "sleep delay");
}

TEST_F(SleepWatchTest, AWakeIsToldByWhoeverTellsOfItFirst) {
    appear();
    watch();
    ASSERT_TRUE(runUntil([&] { return manager->isLockHeld(); }));
    manager->announce(true);
    ASSERT_TRUE(runUntil([&] { return !manager->isLockHeld(); }));
    asleepSec += 1;
    runLoop.handleClockChange();
    EXPECT_EQ(told, Events{"sleep, held back"}) << "a clock that was set before it fell asleep";
    asleepSec += 1;
    runLoop.handleClockChange();
    EXPECT_EQ(told, (Events{"sleep, held back", "wake "}));
    manager->announce(false);
    ASSERT_TRUE(runUntil([&] { return manager->isLockHeld(); }));
    runLoop.handleClockChange();
    EXPECT_EQ(manager->asked.size(), 2U) << "before, it would have given out none";
    manager->announce(true);
    EXPECT_TRUE(runUntil([&] { return told.size() > 2; }));
    EXPECT_EQ(told, (Events{"sleep, held back", "wake ", "sleep, held back"}));
}

TEST_F(SleepWatchTest, ALoginManagerThatIsLateOrRestartedIsAskedAgain) {
    watch();
    for (int i = 0; i < 2; ++i) {
        appear();
        EXPECT_TRUE(runUntil([&] { return manager->isLockHeld(); }));
        manager->announce(true);
        manager->announce(true);
        EXPECT_TRUE(runUntil([&] { return !manager->isLockHeld(); }));
        manager->announce(false);
        EXPECT_TRUE(runUntil([&] { return manager->isLockHeld(); }));
        manager.reset();
    }
    EXPECT_EQ(told.size(), 4U);
}

TEST_F(SleepWatchTest, ALoginManagerThatDiesInASleepHasEndedIt) {
    appear();
    watch();
    ASSERT_TRUE(runUntil([&] { return manager->isLockHeld(); }));
    manager->announce(true);
    ASSERT_TRUE(runUntil([&] { return !manager->isLockHeld(); }));
    manager.reset();
    EXPECT_TRUE(runUntil([&] { return told.size() == 2; }));
    appear();
    ASSERT_TRUE(runUntil([&] { return manager->isLockHeld(); }));
    manager->announce(true);
    EXPECT_TRUE(runUntil([&] { return told.size() == 3; })) << "the next sleep is heard of";
}

TEST_F(SleepWatchTest, ASleepThatNobodyAnnouncedIsSeenByTheClocks) {
    watch();
    asleepSec += 1;
    runLoop.handleClockChange();
    EXPECT_EQ(told, Events{}) << "a clock that was only set";
    asleepSec += 3600;
    runLoop.handleClockChange();
    runLoop.handleClockChange();
    EXPECT_EQ(told, (Events{"sleep", "wake 3601.000000"}));
    EXPECT_FALSE(events.sleptSec);
}

}  // namespace
}  // namespace ostrel
