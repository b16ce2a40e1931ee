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

}  // namespace ostrel
