#include "platform/linux/linux_capabilities.h"

#include <gtest/gtest.h>

#include <string>

#include "base/enum_names.h"
#include "platform/linux/event_loop.h"
#include "platform/linux/fake_bus_service.h"

namespace ostrel {
namespace {

// A desktop that has everything.
DesktopFacts complete() {
    return {.hasX = true,
            .hasIdleTime = true,
            .hasActiveWindow = true,
            .hasTray = true,
            .hasSoundServer = true,
            .names = {"org.freedesktop.login1", "org.freedesktop.Notifications",
                      "org.xfce.ScreenSaver"},
            .notificationServer = "dunst",
            .notificationVendor = {}};
}

// What does not work, such as "hotkeys missing".
std::string lacking(const std::vector<Capability>& capabilities) {
    std::string text;
    for (const Capability& capability : capabilities) {
        EXPECT_EQ(capability.state == Capability::State::works, capability.reason.empty());
        if (capability.state != Capability::State::works) {
            text += (text.empty() ? "" : ", ") + std::string(nameOf(capability.topic)) + " " +
                    std::string(nameOf(capability.state));
        }
    }
    return text;
}

TEST(LinuxCapabilitiesTest, EachTellsWhatItLacks) {
    struct Case {
        const char* name;
        void (*take)(DesktopFacts&);
        const char* lacking;
    };
    const Case cases[] = {
        {"all", [](DesktopFacts&) {}, ""},
        {"a Wayland session", [](DesktopFacts& facts) { facts.isXwayland = true; },
         "away missing, calls missing, films missing, hotkeys missing"},
        {"no display", [](DesktopFacts& facts) { facts.hasX = facts.hasTray = false; },
         "away missing, calls missing, films missing, hotkeys missing, status_item missing"},
        {"a bare X server",
         [](DesktopFacts& facts) { facts.hasActiveWindow = facts.hasIdleTime = false; },
         "away missing, calls missing, films missing"},
        {"no login manager",
         [](DesktopFacts& facts) { facts.names.remove("org.freedesktop.login1"); },
         "films partly, sleep partly, lock partly"},
        {"another notification server",
         [](DesktopFacts& facts) { facts.notificationServer = "mako"; }, "do_not_disturb missing"},
        {"no notification server",
         [](DesktopFacts& facts) { facts.names.remove("org.freedesktop.Notifications"); },
         "do_not_disturb missing, notifications missing"},
        {"a locker that tells nobody",
         [](DesktopFacts& facts) { facts.names.remove("org.xfce.ScreenSaver"); }, "lock partly"},
        {"a new panel",
         [](DesktopFacts& facts) {
             facts.hasTray = false;
             facts.names.insert("org.kde.StatusNotifierWatcher");
         },
         ""},
        {"silence", [](DesktopFacts& facts) { facts.hasSoundServer = false; }, "chimes missing"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        DesktopFacts facts = complete();
        c.take(facts);
        EXPECT_EQ(lacking(capabilitiesWith(facts)), c.lacking);
    }
}

using CapabilitiesOnBusTest = BusTest;

TEST_F(CapabilitiesOnBusTest, ServerThatHangsIsWaitedForOnlyAWhile) {
    FakeBusService server(bus, "server", "org.freedesktop.Notifications");
    server.hangs = true;
    server.appear();
    QObject receiver;
    std::vector<std::vector<Capability>> told;
    findCapabilities(bus.connection("asking"), QDBusConnection("none"), &receiver,
                     [&](std::vector<Capability> found) { told.push_back(std::move(found)); });
    ASSERT_TRUE(runUntil([&] { return !told.empty(); }));
    EXPECT_NE(lacking(told[0]).find("do_not_disturb missing"), std::string::npos);
    EXPECT_EQ(lacking(told[0]).find("notifications"), std::string::npos) << "there is one";
}

}  // namespace
}  // namespace ostrel
