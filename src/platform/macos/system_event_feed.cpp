#include "platform/macos/system_event_feed.h"

#include <utility>

#include "platform/api/system_events.h"
#include "platform/macos/mac_run_loop.h"

namespace ostrel {
namespace {

using Cover = SessionPresence::Cover;

// Below it the two clocks were only not read at one instant.
constexpr double kLeastSleepSec = 2;

}  // namespace

SystemEventFeed::SystemEventFeed(SystemEvents& events, MacRunLoop& runLoop, Sources sources)
    : events_(events),
      runLoop_(runLoop),
      sources_(std::move(sources)),
      knownAsleepSec_(sources_.asleepSec()),
      turns_(runLoop.turnBegins.subscribe([this] { lookForSleep(); })) {}

void SystemEventFeed::take(Event event) {
    switch (event) {
        case Event::willSleep:
            fallAsleep();
            return followDarkness();
        case Event::didWake:
            if (isAsleep_) {
                wake();
            }
            lookForSleep();
            followDarkness();
            return runLoop_.recheck();
        case Event::zoneChanged:
            sources_.forgetZone();
            [[fallthrough]];
        case Event::clockSet:
            events_.clockChanged.send();
            return runLoop_.recheck();
        case Event::dayChanged:
            return events_.dayChanged.send();
        case Event::becameActive:
            return events_.didBecomeActive.send();
        case Event::screensSlept:
            presence_.cover(Cover::screensAsleep);
            break;
        case Event::screensWoke:
            presence_.uncover(Cover::screensAsleep);
            break;
        case Event::screenSaverStarted:
            presence_.cover(Cover::screenSaver);
            break;
        case Event::screenSaverStopped:
            presence_.uncover(Cover::screenSaver);
            break;
        case Event::locked:
            presence_.cover(Cover::lock);
            break;
        case Event::unlocked:
            presence_.uncover(Cover::lock);
            break;
        case Event::sessionLeft:
            presence_.cover(Cover::otherUser);
            break;
        case Event::sessionBack:
            presence_.uncover(Cover::otherUser);
            break;
    }
    followDarkness();
    events_.isSessionOnScreen.set(presence_.isOnScreen());
}

void SystemEventFeed::followDarkness() {
    const bool isDark = isAsleep_ && presence_.areScreensAsleep();
    if (std::exchange(isDark_, isDark) == isDark) {
        return;
    }
    runLoop_.setHeld(isDark);
    if (!isDark) {
        lookForSleep();
        runLoop_.recheck();
    }
}

void SystemEventFeed::fallAsleep() {
    if (!std::exchange(isAsleep_, true)) {
        events_.willSleep.send();
    }
}

void SystemEventFeed::wake() {
    const double asleepSec = sources_.asleepSec();
    isAsleep_ = false;
    events_.sleptSec = asleepSec - std::exchange(knownAsleepSec_, asleepSec);
    events_.didWake.send();
    events_.sleptSec.reset();
}

void SystemEventFeed::lookForSleep() {
    if (!isDark_ && sources_.asleepSec() - knownAsleepSec_ >= kLeastSleepSec) {
        fallAsleep();
        wake();
    }
}

}  // namespace ostrel
