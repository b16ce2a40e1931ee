#include "platform/linux/zone_watch.h"

#include <gtest/gtest.h>

#include <fstream>

#include "platform/api/system_events.h"
#include "platform/linux/event_loop.h"
#include "platform/linux/temporary_folder.h"

namespace ostrel {

TEST(ZoneWatchTest, AnotherZoneIsAChangeOfTheClock) {
    const TemporaryFolder folder;
    const QByteArray before = qgetenv("TZ");
    qputenv("TZ", "Europe/Berlin");
    SystemEvents events;
    const ZoneWatch watch(events, QString::fromStdString(folder.path()));
    int changes = 0;
    const Subscription counting = events.clockChanged.subscribe([&changes] { ++changes; });
    std::ofstream(folder.path() / "other-setting") << "x";
    runFor(std::chrono::milliseconds(50));
    EXPECT_EQ(changes, 0);
    qputenv("TZ", "Asia/Kolkata");
    std::ofstream(folder.path() / "localtime") << "x";
    EXPECT_TRUE(runUntil([&changes] { return changes == 1; }));
    before.isNull() ? qunsetenv("TZ") : qputenv("TZ", before);
}

}  // namespace ostrel
