#include "presence/focus_filter_watcher.h"

#include <gtest/gtest.h>

#include "support/records_bench.h"

namespace ostrel {

TEST(FocusFilterWatcherTest, TheFirstKeyWithAUsableValueCounts) {
    using Announcement = DistributedAnnouncements::Announcement;
    using Info = std::map<std::string, DistributedAnnouncements::Value>;
    const std::string one = "com.apple.controlcenter.DoNotDisturbActive";
    const std::string other = "com.apple.donotdisturb.notification";
    constexpr std::monostate kOdd;
    const struct {
        std::string name;
        Info info;
        std::optional<bool> isOn;  // absent: nothing was said
    } cases[] = {
        {other, {{"state", std::string("ACTIVE")}}, true},
        {one, {{"isActive", std::string("inactive")}}, false},
        {other, {{"DoNotDisturb", true}}, true},
        {one, {{"active", false}, {"state", true}}, false},
        {one, {{"isActive", false}, {"DoNotDisturb", true}}, false},
        {one, {{"active", kOdd}, {"state", true}}, true},
        {one, {{"active", kOdd}}, std::nullopt},
        {one, {}, std::nullopt},
        {"com.apple.other", {{"active", true}, {"state", false}}, std::nullopt},
    };
    const RecordsBench bench;
    for (const bool before : {false, true}) {
        for (const auto& [name, info, isOn] : cases) {
            DistributedAnnouncements announcements;
            const FocusFilterWatcher watcher({bench.settings, announcements});
            announcements.announced.send(Announcement{one, {{"active", before}}});
            announcements.announced.send(Announcement{name, info});
            EXPECT_EQ(*watcher.behavior() == FocusBehavior::on, isOn.value_or(before))
                << name << " " << (info.empty() ? "nothing" : info.begin()->first);
        }
    }
}

}  // namespace ostrel
