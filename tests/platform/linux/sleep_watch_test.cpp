#include "platform/linux/sleep_watch.h"

#include <gtest/gtest.h>
#include <poll.h>
#include <unistd.h>

#include <QDBusUnixFileDescriptor>
#include <array>
#include <optional>

#include "platform/api/system_events.h"
#include "platform/linux/event_loop.h"
#include "platform/linux/fake_bus_service.h"
#include "platform/linux/linux_clock.h"
#include "platform/linux/linux_run_loop.h"

namespace ostrel {
namespace {

// Gives out locks, as the login manager does: one end of a pipe, closed when the lock is let go.
class LoginManager : public FakeBusService {
  public:
    explicit LoginManager(PrivateBus& bus)
        : FakeBusService(bus, "manager", "org.freedesktop.login1") {
        answers["Inhibit"] = [this](const QDBusMessage&) {
            std::array<int, 2> ends{};
            EXPECT_EQ(pipe(ends.data()), 0);
            close(ourEnd_);
            ourEnd_ = ends[0];
            const QDBusUnixFileDescriptor lock(ends[1]);
            close(ends[1]);
            return QVariantList{QVariant::fromValue(lock)};
        };
        appear();
    }
    ~LoginManager() override { close(ourEnd_); }

    [[nodiscard]] bool isLockHeld() const {
        pollfd end{ourEnd_, POLLIN, 0};
        return ourEnd_ >= 0 && ::poll(&end, 1, 0) == 0;
    }
    void announce(bool isAboutToSleep) {
        send("/org/freedesktop/login1", "org.freedesktop.login1.Manager", "PrepareForSleep",
             {isAboutToSleep});
    }

  private:
    int ourEnd_ = -1;
};

struct SleepWatchTest : BusTest {
    void prepare() override {
        observers.push_back(events.willSleep.subscribe([this] { told.push_back("sleep"); }));
        observers.push_back(events.didWake.subscribe([this] {
            told.push_back("wake " + (events.sleptSec ? std::to_string(*events.sleptSec) : ""));
        }));
    }
    void appear() { manager.emplace(bus); }
    void watch() {
        sleepWatch.emplace(events, runLoop, bus.connection("client"), [this] { return asleepSec; });
    }

    LinuxRunLoop runLoop{systemWallTime};
    SystemEvents events;
    double asleepSec = 50;
    Events told;
    std::vector<Subscription> observers;
    std::optional<LoginManager> manager;
    std::optional<SleepWatch> sleepWatch;
};

TEST_F(SleepWatchTest, ALoginManagerThatIsLateOrDiesInASleepIsAskedAgain) {
    watch();
    for (const std::size_t deaths : {0U, 1U}) {
        appear();
        EXPECT_TRUE(runUntil([&] { return manager->isLockHeld(); }));
        manager->announce(true);
        manager->announce(true);
        EXPECT_TRUE(runUntil([&] { return !manager->isLockHeld(); }));
        manager.reset();
        EXPECT_TRUE(runUntil([&] { return told.size() == 2 * (deaths + 1); }))
            << "which has ended the sleep";
    }
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
