#include "presence/meeting_watcher.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "platform/virtual/virtual_devices.h"
#include "support/events.h"
#include "support/records_bench.h"

namespace ostrel {
namespace {

struct Bench : RecordsBench {
    void bringToFront(const char* identifier) { frontmost.set({{identifier, 4711}}); }

    VirtualFrontmostApplication frontmost;
    std::unique_ptr<MeetingWatcher> watcher =
        std::make_unique<MeetingWatcher>(MeetingWatcher::Services{settings, frontmost, runLoop});
};

}  // namespace

TEST(MeetingWatcherTest, OnlyAListedApplicationInFrontIsAMeeting) {
    Bench bench;
    std::vector<bool> heard;
    const Subscription watching =
        bench.watcher->meetingActive().onChange([&](bool isActive) { heard.push_back(isActive); });
    bench.bringToFront("us.zoom.xos");
    EXPECT_FALSE(bench.watcher->isMeetingActive()) << "it has not looked yet";
    bench.run(0);
    EXPECT_TRUE(bench.watcher->isMeetingActive());
    bench.bringToFront("US.zoom.xos");
    bench.run(4.9);
    EXPECT_TRUE(bench.watcher->isMeetingActive());
    bench.run(0.1);
    EXPECT_FALSE(bench.watcher->isMeetingActive());
    bench.bringToFront("com.hnc.Discord");
    bench.run(5);
    EXPECT_TRUE(bench.watcher->isMeetingActive());
    bench.setUp([](SettingsModel& settings) { settings.deferAppBundleIDs.clear(); });
    bench.run(5);
    EXPECT_FALSE(bench.watcher->isMeetingActive());
    bench.frontmost.set(FrontmostApplication::Application{std::nullopt, 4711});
    bench.run(50);
    EXPECT_EQ(heard, (std::vector<bool>{true, false, true, false}));
}

TEST(MeetingWatcherTest, WaitsLookEveryThirtySecondsUntilItIsClear) {
    Bench bench;
    Events done;
    const auto wait = [&](const char* name) {
        bench.watcher->waitUntilClear([&done, name] { done.emplace_back(name); });
    };
    bench.bringToFront("us.zoom.xos");
    wait("first");
    bench.run(10);
    wait("second");
    bench.run(55);
    bench.frontmost.set(std::nullopt);
    bench.run(4);
    EXPECT_EQ(done, Events());
    bench.run(1);
    EXPECT_EQ(done, (Events{"second"}));
    bench.run(20);
    EXPECT_EQ(done, (Events{"second", "first"}));
    bench.run(300);
    EXPECT_EQ(done.size(), 2U) << "each completion runs once";
}

TEST(MeetingWatcherTest, CompletionMayWaitAgainOrEndTheWatcher) {
    Bench bench;
    Events done;
    bench.watcher->waitUntilClear([&] {
        done.emplace_back("first");
        bench.watcher->waitUntilClear([&] {
            done.emplace_back("second");
            bench.watcher.reset();
        });
    });
    bench.watcher->waitUntilClear([&] { done.emplace_back("third"); });
    bench.run(100);
    EXPECT_EQ(done, (Events{"first", "third", "second"}));
}

}  // namespace ostrel
