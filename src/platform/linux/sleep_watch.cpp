#include "platform/linux/sleep_watch.h"

#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <ctime>
#include <utility>

#include "platform/api/system_events.h"
#include "platform/linux/dbus_questions.h"
#include "platform/linux/linux_run_loop.h"

namespace ostrel {
namespace {

// Below it the two clocks were only not read at one instant.
constexpr double kLeastSleepSec = 2;

double read(clockid_t clock) {
    timespec time{};
    clock_gettime(clock, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

}  // namespace

double SleepWatch::systemAsleepSec() {
    return read(CLOCK_BOOTTIME) - read(CLOCK_MONOTONIC);
}

SleepWatch::SleepWatch(SystemEvents& events, LinuxRunLoop& runLoop, QDBusConnection bus,
                       AsleepSec asleepSec)
    : events_(events),
      bus_(std::move(bus)),
      asleepSec_(std::move(asleepSec)),
      knownAsleepSec_(asleepSec_()),
      clockChanges_(runLoop.clockWasSet.subscribe([this] { lookForUnannouncedSleep(); })) {
    if (!bus_.isConnected()) {
        return;
    }
    // Without the name of the service, which Qt would wait to look up.
    bus_.connect(QString(), kLoginPath, kLoginManager, QStringLiteral("PrepareForSleep"), this,
                 SLOT(prepareForSleep(bool)));
    auto* watcher = new QDBusServiceWatcher(kLoginService, bus_,
                                            QDBusServiceWatcher::WatchForOwnerChange, this);
    connect(watcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString&, const QString&, const QString& owner) {
                // One that died in between will not tell of the wake.
                if (isAsleep_) {
                    prepareForSleep(false);
                } else if (!owner.isEmpty()) {
                    takeLock();
                }
            });
    takeLock();
}

void SleepWatch::takeLock() {
    QDBusMessage call =
        questionTo(kLoginService, kLoginPath, kLoginManager, QStringLiteral("Inhibit"));
    call << QStringLiteral("sleep") << QStringLiteral("Ostrel")
         << QStringLiteral("Ends the break on the screen") << QStringLiteral("delay");
    ask(bus_, call, this, [this, request = ++lockRequest_](const QDBusMessage& answer) {
        const auto lock = onlyArgument(answer, QLatin1String("h"));
        if (lock && request == lockRequest_) {
            lock_ = lock->value<QDBusUnixFileDescriptor>();
        }
    });
}

void SleepWatch::prepareForSleep(bool isAboutTo) {
    if (!isAboutTo && !lock_.isValid()) {
        takeLock();
    }
    if (isAboutTo == isAsleep_) {
        return;
    }
    isAsleep_ = isAboutTo;
    if (isAboutTo) {
        events_.willSleep.send();
        ++lockRequest_;
        lock_ = QDBusUnixFileDescriptor();
        return;
    }
    knownAsleepSec_ = asleepSec_();
    events_.didWake.send();
}

// The kernel tells of a set clock at every wake, and may be heard before the login manager, which
// gives out no lock until it has told of the wake itself.
void SleepWatch::lookForUnannouncedSleep() {
    const double sleptSec = asleepSec_() - knownAsleepSec_;
    if (sleptSec < kLeastSleepSec) {
        return;
    }
    knownAsleepSec_ += sleptSec;
    if (isAsleep_) {
        isAsleep_ = false;
        events_.didWake.send();
        return;
    }
    events_.willSleep.send();
    events_.sleptSec = sleptSec;
    events_.didWake.send();
    events_.sleptSec.reset();
}

}  // namespace ostrel
