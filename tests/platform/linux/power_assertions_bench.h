#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <QDBusConnection>
#include <QDBusMessage>
#include <cstdint>
#include <memory>
#include <set>

#include "platform/linux/event_loop.h"
#include "platform/linux/fake_bus_service.h"
#include "platform/linux/fake_processes.h"
#include "platform/linux/linux_power_assertions.h"
#include "platform/linux/private_bus.h"
#include "platform/virtual/virtual_devices.h"
#include "platform/virtual/virtual_run_loop.h"

namespace ostrel {

// LinuxPowerAssertions over a session bus and a system bus of the test's own.
struct PowerAssertionsBench : BusTest {
    using Holders = std::set<std::int64_t>;

    PrivateBus& session = bus;
    PrivateBus system;
    VirtualRunLoop loop{wallTimeAt(0)};
    FakeProcesses processes;
    VirtualScreenWindows windows;
    std::unique_ptr<LinuxPowerAssertions> assertions;

    void TearDown() override { assertions.reset(); }

    void launch() {
        assertions = std::make_unique<LinuxPowerAssertions>(
            LinuxPowerAssertions::Buses{session.connection(QStringLiteral("client")),
                                        session.connection(QStringLiteral("monitor")),
                                        system.connection(QStringLiteral("system-client"))},
            loop, windows, processes.table());
        // A monitor has no name on the bus.
        const QString monitor = session.connection(QStringLiteral("monitor")).baseService();
        ASSERT_TRUE(runUntil([&] { return !session.hasName(monitor); }));
    }

    [[nodiscard]] Holders holders() const {
        const auto all = assertions->byProcess();
        EXPECT_TRUE(all);
        Holders found;
        for (const auto& [process, types] : all ? *all : PowerAssertions::ByProcess()) {
            EXPECT_EQ(types,
                      (PowerAssertions::ByProcess::mapped_type{"PreventUserIdleDisplaySleep"}));
            found.insert(process);
        }
        return found;
    }
    [[nodiscard]] bool becomes(const Holders& expected) const {
        return runUntil([&] { return holders() == expected; });
    }
    // What is on its way on the session bus has arrived, also where an answer asks for the next.
    void settle() {
        for (int step = 0; step < 4; ++step) {
            session.settle(QStringLiteral("client"), QStringLiteral("settler"));
        }
    }
};

}  // namespace ostrel
