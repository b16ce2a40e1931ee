#include "platform/linux/zone_watch.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <string>

#include "platform/api/system_events.h"
#include "platform/linux/event_loop.h"
#include "platform/linux/temporary_folder.h"

namespace ostrel {

TEST(ZoneWatchTest, AnotherZoneIsAChangeOfTheClock) {
    const TemporaryFolder folder;
    const char* before = std::getenv("TZ");
    const std::string zone = before ? before : "";
    setenv("TZ", "Europe/Berlin", 1);
    SystemEvents events;
    const ZoneWatch watch(events, QString::fromStdString(folder.path()));
    int changes = 0;
    const Subscription counting = events.clockChanged.subscribe([&changes] { ++changes; });
    std::ofstream(folder.path() / "other-setting") << "x";
    runFor(std::chrono::milliseconds(50));
    EXPECT_EQ(changes, 0);
    setenv("TZ", "Asia/Kolkata", 1);
    std::ofstream(folder.path() / "localtime") << "x";
    EXPECT_TRUE(runUntil([&changes] { return changes == 1; }));
    before ? setenv("TZ", zone.c_str(), 1) : unsetenv("TZ");
}

}  // namespace ostrel
