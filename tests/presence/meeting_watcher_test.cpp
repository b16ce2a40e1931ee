#include "presence/meeting_watcher.h"

#include <gtest/gtest.h>

#include <memory>

#include "platform/virtual/virtual_devices.h"
#include "support/events.h"
#include "support/records_bench.h"

namespace ostrel {

TEST(MeetingWatcherTest, CompletionMayWaitAgainOrEndTheWatcher) {
    RecordsBench bench;
    const VirtualFrontmostApplication frontmost;
    auto watcher = std::make_unique<MeetingWatcher>(
        MeetingWatcher::Services{bench.settings, frontmost, bench.runLoop});
    Events done;
    watcher->waitUntilClear([&] {
        done.emplace_back("first");
        watcher->waitUntilClear([&] {
            done.emplace_back("second");
            watcher.reset();
        });
    });
    watcher->waitUntilClear([&] { done.emplace_back("third"); });
    bench.run(100);
    EXPECT_EQ(done, (Events{"first", "third", "second"}));
}

TEST(MeetingWatcherTest, WholeIdentifiersCountAndAWaitLooksEveryHalfMinute) {
    RecordsBench bench;
    VirtualFrontmostApplication frontmost;
    MeetingWatcher watcher({bench.settings, frontmost, bench.runLoop});
    const std::pair<const char*, bool> cases[] = {
        {"us.zoom", false}, {"us.zoom.xos.beta", false}, {"us.zoom.xos", true}};
    for (const auto& [identifier, isCall] : cases) {
        frontmost.set({{identifier, 7}});
        bench.run(5);
        EXPECT_EQ(watcher.isMeetingActive(), isCall) << identifier;
    }
    bool isDone = false;
    watcher.waitUntilClear([&isDone] { isDone = true; });
    bench.run(31);
    frontmost.set(std::nullopt);
    bench.run(28);
    EXPECT_FALSE(isDone);
    bench.run(1);
    EXPECT_TRUE(isDone);
}

}  // namespace ostrel
