#import <AppKit/AppKit.h>
#include <gtest/gtest.h>

#include "base/signal.h"
#include "platform/api/system_events.h"
#include "platform/macos/foundation_values.h"
#include "platform/macos/mac_announcements.h"
#include "platform/macos/mac_clock.h"
#include "platform/macos/main_timer.h"
#include "platform/macos/observers.h"
#include "platform/macos/on_main.h"
#include "platform/macos/time_zone.h"
#include "platform/macos/workspace_events.h"
#include "platform/macos/workspace_frontmost.h"
#include "spin.h"

using ostrel::NotificationObserver;

// Counts who listens.
@interface CountingCentre : NSNotificationCenter {
  @public
    int listeners;
}
@end

@implementation CountingCentre
- (void)addObserver:(id)observer selector:(SEL)selector name:(NSString*)name object:(id)object {
    ++listeners;
    [super addObserver:observer selector:selector name:name object:object];
}
- (void)removeObserver:(id)observer {
    --listeners;
    [super removeObserver:observer];
}
@end

// What another thread does.
@interface OtherThread : NSObject {
  @public
    std::function<void()> work;
}
- (void)run;
@end

@implementation OtherThread
- (void)run {
    work();
}
@end

namespace ostrel {
namespace {

void runElsewhere(std::function<void()> work) {
    OtherThread* const other = [[OtherThread alloc] init];
    other->work = std::move(work);
    [NSThread detachNewThreadSelector:@selector(run) toTarget:other withObject:nil];
}

void post(NSNotificationCenter* centre, NSString* name) {
    [centre postNotificationName:name object:nil];
}

TEST(OnMainRun, BringsWorkToTheNextTurnOfTheMainThreadInItsOrder) {
    std::string log;
    runElsewhere([&] {
        for (const char what : {'a', 'b', 'c'}) {
            onMain([&log, what] { log += [NSThread isMainThread] ? what : '?'; });
        }
    });
    ASSERT_TRUE(spinUntil([&] { return log.size() == 3; }));
    onMain([&] { log += 'd'; });
    EXPECT_EQ(log, "abc");
    EXPECT_TRUE(spinUntil([&] { return log == "abcd"; }));
}

struct ObserverRun : ::testing::Test {
    CountingCentre* centre = [[CountingCentre alloc] init];
    int heard = 0;
};

TEST_F(ObserverRun, HearsInsideThePostingOnTheMainThreadUntilItIsGone) {
    {
        const NotificationObserver observer(centre, @"a", [this](NSNotification*) { ++heard; });
        post(centre, @"a");
        post(centre, @"b");
        EXPECT_EQ(heard, 1);
        EXPECT_EQ(centre->listeners, 1);
    }
    post(centre, @"a");
    EXPECT_EQ(heard, 1);
    EXPECT_EQ(centre->listeners, 0);
}

TEST_F(ObserverRun, WhatAnotherThreadPostsIsHeardOnTheMainThread) {
    bool onMainThread = false;
    const NotificationObserver observer(centre, @"a", [&](NSNotification*) {
        onMainThread = [NSThread isMainThread];
        ++heard;
    });
    runElsewhere([this] { post(centre, @"a"); });
    ASSERT_TRUE(spinUntil([this] { return heard == 1; }));
    EXPECT_TRUE(onMainThread);
}

TEST_F(ObserverRun, WhatIsOnItsWayWhenTheObserverGoesIsNotHeard) {
    auto observer =
        std::make_unique<NotificationObserver>(centre, @"a", [this](NSNotification*) { ++heard; });
    std::atomic<bool> posted = false;
    runElsewhere([&] {
        post(centre, @"a");
        posted = true;
    });
    while (!posted) {
    }
    observer.reset();
    spinFor(0.05);
    EXPECT_EQ(heard, 0);
}

struct WorkspaceEventsRun : ::testing::Test {
    double asleepSec = 100;
    int zonesForgotten = 0;
    std::string log;
    SystemEvents events;
    MacRunLoop loop{{macAwakeTime, macWallTime}, std::make_unique<MainTimer>()};
    SystemEventFeed feed{
        events, loop, {[this] { return asleepSec; }, [this] { ++zonesForgotten; }}};
    std::unique_ptr<WorkspaceEvents> workspaceEvents = std::make_unique<WorkspaceEvents>(feed);
    std::vector<Subscription> watches;

    NSNotificationCenter* workspace = [[NSWorkspace sharedWorkspace] notificationCenter];
    NSNotificationCenter* own = [NSNotificationCenter defaultCenter];
    NSDistributedNotificationCenter* distributed = [NSDistributedNotificationCenter defaultCenter];

    WorkspaceEventsRun() {
        for (const auto& [signal, name] : {std::pair(&events.willSleep, "sleep "),
                                           {&events.didWake, "wake "},
                                           {&events.clockChanged, "clock "},
                                           {&events.dayChanged, "day "},
                                           {&events.didBecomeActive, "active "}}) {
            watches.push_back(signal->subscribe([this, what = name] { log += what; }));
        }
        watches.push_back(events.isSessionOnScreen.onChange(
            [this](bool isOn) { log += isOn ? "shown " : "hidden "; }));
    }

    void announce(NSString* name) {
        [distributed postNotificationName:name object:nil userInfo:nil deliverImmediately:YES];
    }
};

TEST_F(WorkspaceEventsRun, EachAnnouncementOfItsCentreBecomesItsEvent) {
    struct Case {
        NSNotificationCenter* centre;
        NSString* name;
        const char* told;
    };
    const Case cases[] = {
        {workspace, @"NSWorkspaceWillSleepNotification", "sleep "},
        {workspace, @"NSWorkspaceDidWakeNotification", "wake "},
        {workspace, @"NSWorkspaceScreensDidSleepNotification", "hidden "},
        {workspace, @"NSWorkspaceScreensDidWakeNotification", "shown "},
        {workspace, @"NSWorkspaceSessionDidResignActiveNotification", "hidden "},
        {workspace, @"NSWorkspaceSessionDidBecomeActiveNotification", "shown "},
        {own, NSSystemClockDidChangeNotification, "clock "},
        {own, NSSystemTimeZoneDidChangeNotification, "clock "},
        {own, @"NSCalendarDayChangedNotification", "day "},
        {own, NSApplicationDidBecomeActiveNotification, "active "},
        {own, @"NSWorkspaceWillSleepNotification", ""},  // never sent there
    };
    std::string all;
    for (const Case& one : cases) {
        post(one.centre, one.name);
        all += one.told;
        // Here the workspace tells all programs, which takes a moment.
        EXPECT_TRUE(spinUntil([&] { return log == all; })) << [one.name UTF8String] << ": " << log;
    }
    spinFor(0.1);
    EXPECT_EQ(log, all);
    EXPECT_EQ(zonesForgotten, 1);
}

TEST_F(WorkspaceEventsRun, TheLockIsHeardFromOtherProcessesAndNothingOnceItIsGone) {
    announce(@"com.apple.screenIsLocked");
    ASSERT_TRUE(spinUntil([this] { return log == "hidden "; })) << log;
    announce(@"com.apple.screenIsUnlocked");
    ASSERT_TRUE(spinUntil([this] { return log == "hidden shown "; })) << log;
    announce(@"com.apple.screensaver.didstart");
    announce(@"com.apple.screensaver.didstop");
    ASSERT_TRUE(spinUntil([this] { return log == "hidden shown hidden shown "; })) << log;
    workspaceEvents.reset();
    announce(@"com.apple.screenIsLocked");
    post(workspace, NSWorkspaceWillSleepNotification);
    spinFor(0.2);
    EXPECT_EQ(log, "hidden shown hidden shown ");
}

TEST(FoundationValuesRun, TruthNumbersAndTextAreToldApart) {
    const PlainDictionary values = toPlainDictionary(@{
        @"yes" : [NSNumber numberWithBool:YES],
        @"no" : [NSNumber numberWithBool:NO],
        @"one" : @1,
        @"half" : @0.5,
        @"text" : @"1",
        @"list" : @[ @1 ],
        @2 : @"a key that is no text"
    });
    EXPECT_EQ(values, (PlainDictionary{{"yes", true},
                                       {"no", false},
                                       {"one", std::int64_t{1}},
                                       {"half", 0.5},
                                       {"text", std::string("1")},
                                       {"list", std::monostate{}}}));
    EXPECT_EQ(toPlainDictionary(@"no dictionary"), PlainDictionary{});
}

TEST(MacAnnouncementsRun, DoNotDisturbArrivesWithItsValues) {
    std::vector<std::string> names;
    decltype(DistributedAnnouncements::Announcement::userInfo) values;
    MacAnnouncements announcements;
    const Subscription watch = announcements.announced.subscribe([&](const auto& one) {
        names.push_back(one.name);
        values = one.userInfo;
    });
    const std::vector<std::string> expected = {"com.apple.controlcenter.DoNotDisturbActive",
                                               "com.apple.donotdisturb.notification"};
    NSDictionary* const info =
        @{@"active" : [NSNumber numberWithBool:YES],
          @"half" : @0.5,
          @"text" : @"TRUE"};
    for (const std::string& name : {expected[0], std::string("com.apple.other"), expected[1]}) {
        [[NSDistributedNotificationCenter defaultCenter] postNotificationName:@(name.c_str())
                                                                       object:nil
                                                                     userInfo:info
                                                           deliverImmediately:YES];
    }
    ASSERT_TRUE(spinUntil([&] { return names.size() >= 2; }));
    spinFor(0.1);
    EXPECT_EQ(names, expected);
    // GNUstep's centre makes numbers of truth values on their way.
    EXPECT_TRUE(values == (decltype(values){{"active", std::int64_t{1}},
                                            {"half", std::monostate{}},
                                            {"text", std::string("TRUE")}}));
}

TEST(TimeZoneRun, NamesTheZoneThatTheUserHasNow) {
    NSUserDefaults* const defaults = [NSUserDefaults standardUserDefaults];
    for (NSString* zone in @[ @"America/Havana", @"Asia/Kathmandu" ]) {
        [defaults setObject:zone forKey:@"Local Time Zone"];  // GNUstep's setting
        forgetMacTimeZone();
        EXPECT_EQ(macTimeZone(), [zone UTF8String]);
    }
    [defaults removeObjectForKey:@"Local Time Zone"];
}

TEST(WorkspaceFrontmostRun, WithoutADesktopNothingIsInFront) {
    EXPECT_FALSE(WorkspaceFrontmost().current());
}

}  // namespace
}  // namespace ostrel
