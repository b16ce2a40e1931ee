#include "platform/macos/system_event_feed.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/api/system_events.h"
#include "platform/macos/announced_values.h"
#include "platform/macos/mac_run_loop.h"

namespace ostrel {
namespace {

using namespace std::chrono_literals;
using Event = SystemEventFeed::Event;

struct SystemEventFeedTest : ::testing::Test {
    struct HandAlarm : MacRunLoop::Alarm {
        void ringIn(std::optional<RunLoopClock::duration>) override {}
    };

    SystemEventFeedTest() {
        for (const auto& [signal, name] : {std::pair(&events.willSleep, "sleep "),
                                           {&events.clockChanged, "clock "},
                                           {&events.dayChanged, "day "},
                                           {&events.didBecomeActive, "active "}}) {
            watches.push_back(signal->subscribe([this, what = name] { log += what; }));
        }
        watches.push_back(events.didWake.subscribe([this] {
            log += "wake:" + std::to_string(static_cast<int>(events.sleptSec.value_or(-1))) + " ";
        }));
        watches.push_back(events.isSessionOnScreen.onChange(
            [this](bool isOn) { log += isOn ? "shown " : "hidden "; }));
    }
    // The computer sleeps.
    void sleep(double sec) {
        asleepSec += sec;
        wallNow += WallClock::duration{sec};
    }
    std::string take(const std::vector<Event>& list) {
        log.clear();
        for (const Event event : list) {
            feed.take(event);
        }
        return log;
    }
    std::string ring() {
        log.clear();
        alarm->rang.send();
        return log;
    }

    std::string log;
    double asleepSec = 1000;
    WallTime wallNow = wallTimeAt(800'000'000);
    RunLoopTime awakeNow{};
    SystemEvents events;
    std::vector<Subscription> watches;
    HandAlarm* alarm = new HandAlarm;
    MacRunLoop loop{{[this] { return awakeNow; }, [this] { return wallNow; }},
                    std::unique_ptr<MacRunLoop::Alarm>(alarm)};
    SystemEventFeed feed{
        events, loop, {[this] { return asleepSec; }, [this] { log += "forget "; }}};
};

TEST_F(SystemEventFeedTest, AWakeTellsHowLongTheSleepWasBeforeOverdueTimersFire) {
    const Timer due = loop.callAt(wallNow + wallSec(60), [this] { log += "timer "; });
    EXPECT_EQ(take({Event::willSleep}), "sleep ");
    sleep(3700);
    EXPECT_EQ(take({Event::didWake}), "wake:3700 timer ");
    EXPECT_EQ(events.sleptSec, std::nullopt);
}

TEST_F(SystemEventFeedTest, ATimerThatRingsFirstWaitsForTheWakeAlsoOfASleepThatNobodyAnnounced) {
    Timer due = loop.callAfter(0s, [this] { log += "timer "; });
    take({Event::willSleep});
    sleep(600);
    EXPECT_EQ(ring(), "wake:600 timer ");
    EXPECT_EQ(take({Event::didWake}), "");  // it is known by now
    due = loop.callAfter(0s, [this] { log += "timer "; });
    sleep(45);
    EXPECT_EQ(ring(), "sleep wake:45 timer ");
    sleep(1.9);  // the clocks were only not read at one instant
    EXPECT_EQ(ring(), "");
}

TEST_F(SystemEventFeedTest, WhatIsDueWhileOnlyTheScreensSleepOnWaitsForTheUser) {
    for (const auto& [lightsUp, expected] :
         {std::pair(Event::screensWoke, "wake:6000 timer shown "),
          {Event::didWake, "wake:6000 timer "}}) {
        const Timer due = loop.callAfter(0s, [this] { log += "timer "; });
        take({Event::screensSlept, Event::willSleep});
        sleep(3000);
        EXPECT_EQ(ring(), "");
        sleep(3000);
        EXPECT_EQ(take({lightsUp}), expected);
        EXPECT_EQ(take({Event::didWake}), "");
    }
}

TEST_F(SystemEventFeedTest, EachSleepIsToldOnceHoweverOftenItIsAnnounced) {
    EXPECT_EQ(take({Event::willSleep, Event::willSleep}), "sleep ");
    sleep(30);
    EXPECT_EQ(take({Event::didWake, Event::didWake}), "wake:30 ");
    // One that was called off.
    EXPECT_EQ(take({Event::willSleep, Event::didWake}), "sleep wake:0 ");
}

TEST_F(SystemEventFeedTest, AClockThatIsSetRunsWhatHasBecomeDue) {
    const Timer due = loop.callAt(wallNow + wallSec(60), [this] { log += "timer "; });
    wallNow += wallSec(61);
    EXPECT_EQ(take({Event::clockSet}), "clock timer ");
    EXPECT_EQ(take({Event::zoneChanged}), "forget clock ");
    EXPECT_EQ(take({Event::dayChanged, Event::becameActive}), "day active ");
}

TEST_F(SystemEventFeedTest, TheSessionIsOnTheScreensWhenNothingHidesIt) {
    const std::pair<std::vector<Event>, const char*> cases[] = {
        {{Event::screensSlept, Event::screensWoke}, "hidden shown "},
        {{Event::screenSaverStarted, Event::screenSaverStopped}, "hidden shown "},
        {{Event::locked, Event::locked, Event::unlocked}, "hidden shown "},
        {{Event::sessionLeft, Event::sessionBack}, "hidden shown "},
        {{Event::screenSaverStarted, Event::locked, Event::screenSaverStopped, Event::unlocked},
         "hidden shown "},
        // Whoever unlocks has ended the screen saver, whoever comes back has unlocked.
        {{Event::screenSaverStarted, Event::locked, Event::unlocked}, "hidden shown "},
        {{Event::screenSaverStarted, Event::locked, Event::sessionLeft, Event::sessionBack},
         "hidden shown "},
        {{Event::screensSlept, Event::locked, Event::unlocked}, "hidden "},
        {{Event::screensWoke}, "shown "},
    };
    for (const auto& [told, follows] : cases) {
        EXPECT_EQ(take(told), follows);
    }
}

TEST(AnnouncedValuesTest, WholeNumbersAreIntegersAndFractionsNothing) {
    using Value = DistributedAnnouncements::Value;
    const std::pair<PlainValue, Value> cases[] = {
        {true, true},
        {std::int64_t{-3}, std::int64_t{-3}},
        {std::string("TRUE"), std::string("TRUE")},
        {1.0, std::int64_t{1}},
        {0x1p63, Value()},
        {0.5, Value()},
        {std::numeric_limits<double>::quiet_NaN(), Value()},
        {std::numeric_limits<double>::infinity(), Value()},
        {PlainValue(), Value()},
    };
    for (const auto& [plain, announced] : cases) {
        EXPECT_EQ(announcedValues({{"state", plain}}).at("state"), announced) << plain.index();
    }
}

}  // namespace
}  // namespace ostrel
