#import "platform/macos/workspace_events.h"

#import <AppKit/AppKit.h>

#include <vector>

#include "platform/macos/observers.h"
#include "platform/macos/system_names.h"
#include "platform/macos/text.h"

namespace ostrel {

struct WorkspaceEvents::Impl {
    using Event = SystemEventFeed::Event;

    void hear(NSNotificationCenter* centre, NSString* name, Event event) {
        observers.emplace_back(centre, name, [this, event](NSNotification*) { feed.take(event); });
    }

    SystemEventFeed& feed;
    std::vector<NotificationObserver> observers;
};

WorkspaceEvents::WorkspaceEvents(SystemEventFeed& feed) : impl_(new Impl{feed, {}}) {
    using Event = SystemEventFeed::Event;
    Impl& in = *impl_;
    NSNotificationCenter* const workspace = [[NSWorkspace sharedWorkspace] notificationCenter];
    in.hear(workspace, NSWorkspaceWillSleepNotification, Event::willSleep);
    in.hear(workspace, NSWorkspaceDidWakeNotification, Event::didWake);
    in.hear(workspace, NSWorkspaceScreensDidSleepNotification, Event::screensSlept);
    in.hear(workspace, NSWorkspaceScreensDidWakeNotification, Event::screensWoke);
    in.hear(workspace, NSWorkspaceSessionDidResignActiveNotification, Event::sessionLeft);
    in.hear(workspace, NSWorkspaceSessionDidBecomeActiveNotification, Event::sessionBack);

    NSNotificationCenter* const distributed = [NSDistributedNotificationCenter defaultCenter];
    in.hear(distributed, toNSString(kScreenIsLocked), Event::locked);
    in.hear(distributed, toNSString(kScreenIsUnlocked), Event::unlocked);
    in.hear(distributed, toNSString(kScreenSaverStarted), Event::screenSaverStarted);
    in.hear(distributed, toNSString(kScreenSaverStopped), Event::screenSaverStopped);

    NSNotificationCenter* const own = [NSNotificationCenter defaultCenter];
    in.hear(own, NSSystemClockDidChangeNotification, Event::clockSet);
    in.hear(own, NSSystemTimeZoneDidChangeNotification, Event::zoneChanged);
    in.hear(own, NSCalendarDayChangedNotification, Event::dayChanged);
    in.hear(own, NSApplicationDidBecomeActiveNotification, Event::becameActive);
}

WorkspaceEvents::~WorkspaceEvents() = default;

}  // namespace ostrel
