#pragma once

#include <functional>

#include "base/subscription.h"
#include "platform/macos/session_presence.h"

namespace ostrel {

class MacRunLoop;
class SystemEvents;

// Turns what the system announces into SystemEvents, and has the run loop look at the clock again.
//
// A sleep that is not announced, or whose end is not announced before the first timer is due, shows
// in the clock that goes on meanwhile: it is told before any timer runs. While the computer is awake
// with its screens off, to look after itself, the sleep it announced goes on for the user.
class SystemEventFeed {
  public:
    enum class Event {
        willSleep,
        didWake,
        clockSet,
        zoneChanged,
        dayChanged,
        becameActive,
        screensSlept,
        screensWoke,
        screenSaverStarted,
        screenSaverStopped,
        locked,
        unlocked,
        sessionLeft,
        sessionBack
    };
    struct Sources {
        std::function<double()> asleepSec;  // slept since the computer was started
        std::function<void()> forgetZone;   // the time zone that is remembered is not the user's
    };

    // What is handed over as a reference outlives the feed.
    SystemEventFeed(SystemEvents& events, MacRunLoop& runLoop, Sources sources);
    SystemEventFeed(const SystemEventFeed&) = delete;
    SystemEventFeed& operator=(const SystemEventFeed&) = delete;

    void take(Event event);

  private:
    void fallAsleep();
    void wake();
    void lookForSleep();
    void followDarkness();

    SystemEvents& events_;
    MacRunLoop& runLoop_;
    Sources sources_;
    double knownAsleepSec_;
    bool isAsleep_ = false;
    bool isDark_ = false;
    SessionPresence presence_;
    Subscription turns_;
};

}  // namespace ostrel
