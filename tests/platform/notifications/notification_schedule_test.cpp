#include "platform/notifications/notification_schedule.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/api/iso_time.h"
#include "platform/calendar/local_time.h"
#include "platform/calendar/zoned_calendar.h"
#include "platform/virtual/virtual_run_loop.h"
#include "support/events.h"

namespace ostrel {
namespace {

using namespace std::chrono_literals;

using Pending = std::vector<NotificationSchedule::Pending>;

constexpr EveryWeek kMondayAtNine{2, 9};

NotificationRequest request(const std::string& id, NotificationTrigger trigger) {
    return {.id = id,
            .category = {},
            .title = {"title", {}},
            .body = {"body", {"3"}},
            .userInfo = {},
            .trigger = trigger};
}

struct NotificationScheduleTest : ::testing::Test {
    // The schedule of one run of the program, from now on.
    void launch(const Pending& stored = {}) {
        schedule.reset();
        schedule = std::make_unique<NotificationSchedule>(
            loop, calendar, [this] { return loop.wallNow(); }, events,
            [this](const NotificationRequest& delivered) {
                told.push_back(delivered.id + " " + localTimeNow());
            });
        schedule->restore(stored);
    }

    // "Mon 09:00:00"
    [[nodiscard]] std::string localTimeNow() const {
        constexpr const char* kDays[] = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
        const int weekday = calendar.components(loop.wallNow()).weekday;
        return kDays[weekday - 1] + (" " + isoLocalTime(calendar, loop.wallNow()).substr(11, 8));
    }

    [[nodiscard]] Pending pending() const { return schedule->pending().get(); }

    // Runs until clocks in this zone show that time, and answers what was told meanwhile.
    Events toldUntil(const std::string& local) {
        loop.runFor(runLoopSec((at(local) - loop.wallNow()).count()));
        return std::exchange(told, {});
    }

    [[nodiscard]] WallTime at(const std::string& local) const {
        return wallTimeOf(*parseLocalTime(local), zone);
    }

    // The clock is set, or the computer wakes up, to that time.
    void jumpTo(const std::string& local) {
        loop.shiftWallClock(at(local) - loop.wallNow());
        events.clockChanged.send();
    }

    std::string zone = "Europe/Berlin";
    VirtualRunLoop loop{at("2026-03-10T10:00:00")};  // a Tuesday
    ZonedCalendar calendar{[this] { return zone; }};
    SystemEvents events;
    Events told;
    std::unique_ptr<NotificationSchedule> schedule;
};

TEST_F(NotificationScheduleTest, ALaterRequestOfTheSameIdReplacesAndARemovedOneIsForgotten) {
    launch();
    schedule->add(request("a", AfterSeconds{60}));
    schedule->add(request("b", AfterSeconds{60}));
    schedule->add(request("c", AfterSeconds{60}));
    loop.runFor(30s);
    schedule->add(request("a", AfterSeconds{60}));
    schedule->remove("b");
    schedule->add(request("c", {}));
    schedule->add(request("d", AfterSeconds{std::nan("")}));
    EXPECT_EQ(std::exchange(told, {}), Events{"c Tue 10:00:30"}) << "at once, and instead";
    EXPECT_EQ(toldUntil("2026-03-10T11:00:00"), (Events{"d Tue 10:00:31", "a Tue 10:01:30"}))
        << "a second at least";
}

TEST_F(NotificationScheduleTest, AddingTheSameWeeklyOneAtEachLaunchNeitherPutsItOffNorLosesIt) {
    launch();
    schedule->add(request("weekly", kMondayAtNine));
    const Pending stored = pending();
    jumpTo("2026-03-16T09:30:00");
    launch(stored);
    NotificationRequest renamed = request("weekly", kMondayAtNine);
    renamed.title.key = "another title";
    schedule->add(renamed);
    EXPECT_EQ(pending().at(0).request, renamed);
    EXPECT_EQ(toldUntil("2026-04-06T08:59:59"),
              (Events{"weekly Mon 09:30:00", "weekly Mon 09:00:00", "weekly Mon 09:00:00"}))
        << "the last after the change to summer time";
    schedule->add(request("weekly", EveryWeek{2, 10}));
    EXPECT_EQ(toldUntil("2026-04-06T12:00:00"), Events{"weekly Mon 10:00:00"});
}

TEST_F(NotificationScheduleTest, WhatFellDueMeanwhileComesOnceAfterTheLaunchAndTheWeekGoesOn) {
    launch();
    schedule->add(request("once", AfterSeconds{3600}));
    schedule->add(request("later", AfterSeconds{21 * 86400.0}));
    schedule->add(request("weekly", kMondayAtNine));
    const Pending stored = pending();
    schedule.reset();
    jumpTo("2026-03-29T20:00:00");  // a Sunday, two Mondays on
    launch(stored);
    EXPECT_TRUE(told.empty()) << "not within the launch";
    EXPECT_EQ(toldUntil("2026-03-29T20:00:01"),
              (Events{"once Sun 20:00:00", "weekly Sun 20:00:00"}));
    EXPECT_EQ(toldUntil("2026-04-01T00:00:00"),
              (Events{"weekly Mon 09:00:00", "later Tue 11:00:00"}));
}

TEST_F(NotificationScheduleTest, AWeeklyOneFollowsTheUserIntoOtherZonesWithoutComingTwice) {
    const std::pair<const char*, const char*> cases[] = {
        {"America/New_York", "weekly Mon 09:00:00"},
        {"Asia/Tokyo", "weekly Mon 16:30:00"}};  // where it is past nine: at once
    for (const auto& [other, expected] : cases) {
        zone = "Europe/Berlin";
        jumpTo("2026-03-16T08:30:00");
        launch({{request("weekly", kMondayAtNine), at("2026-03-10T10:00:00")}});
        zone = other;
        events.clockChanged.send();
        EXPECT_EQ(toldUntil("2026-03-22T00:00:00"), Events{expected});
    }
}

TEST_F(NotificationScheduleTest, AClockThatIsSetNeitherRepeatsNorSilencesAnything) {
    launch();
    schedule->add(request("weekly", kMondayAtNine));
    EXPECT_EQ(toldUntil("2026-03-16T09:00:10"), Events{"weekly Mon 09:00:00"});
    jumpTo("2026-03-16T08:59:00");
    EXPECT_EQ(toldUntil("2026-03-22T00:00:00"), Events{}) << "corrected by a minute";

    schedule->add(request("once", AfterSeconds{3600}));
    jumpTo("2026-03-22T02:00:00");
    EXPECT_EQ(toldUntil("2026-03-22T02:00:01"), Events{"once Sun 02:00:00"}) << "set past it";

    jumpTo("2027-06-01T00:00:00");  // a year ahead by mistake
    schedule->add(request("once", AfterSeconds{3600}));
    EXPECT_EQ(toldUntil("2027-06-01T00:30:00"), Events{"weekly Tue 00:00:00"});
    jumpTo("2026-03-25T12:00:00");
    EXPECT_EQ(toldUntil("2026-03-31T00:00:00"),
              (Events{"once Wed 13:00:00", "weekly Mon 09:00:00"}));
}

}  // namespace
}  // namespace ostrel
