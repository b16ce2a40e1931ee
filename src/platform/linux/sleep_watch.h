#pragma once

#include <QDBusConnection>
#include <QDBusUnixFileDescriptor>
#include <QObject>
#include <functional>

#include "base/subscription.h"

namespace ostrel {

class LinuxRunLoop;
class SystemEvents;

// Tells of the computer's sleep and of its wake: from the login manager (org.freedesktop.login1),
// which is held back by a delay lock until willSleep was heard, and, where nobody announced it,
// from the clock that goes on during a sleep.
class SleepWatch : public QObject {
    Q_OBJECT

  public:
    // Seconds that the computer has slept since it was started.
    using AsleepSec = std::function<double()>;

    // What is handed over as a reference outlives the watch.
    SleepWatch(SystemEvents& events, LinuxRunLoop& runLoop,
               QDBusConnection bus = QDBusConnection::systemBus(),
               AsleepSec asleepSec = systemAsleepSec);

    // By the system's clocks.
    [[nodiscard]] static double systemAsleepSec();

  private:
    Q_SLOT void prepareForSleep(bool isAboutTo);
    void takeLock();
    void lookForUnannouncedSleep();

    SystemEvents& events_;
    QDBusConnection bus_;
    AsleepSec asleepSec_;
    double knownAsleepSec_;
    bool isAsleep_ = false;
    int lockRequest_ = 0;  // an answer to an earlier one is let go
    QDBusUnixFileDescriptor lock_;
    Subscription clockChanges_;
};

}  // namespace ostrel
