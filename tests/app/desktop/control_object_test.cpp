#include "app/desktop/control_object.h"

#include <unistd.h>

#include "app/control/control.h"
#include "app/desktop/control_names.h"
#include "app/environment/app_environment.h"
#include "app/simulator/virtual_platform.h"
#include "screens/linux/status_bus.h"

namespace ostrel {
namespace {

constexpr const char* kRefusedByTheBus = "org.freedesktop.DBus.Error.AccessDenied";

struct ControlObjectTest : ::testing::Test {
    ControlObjectTest() {
        environment.launch();
        object = std::make_unique<ControlObject>(
            service, control,
            [this](const QString&, QObject*, const ControlObject::Answer& answer) {
                answer(user);
            });
    }

    [[nodiscard]] QDBusMessage call(const char* method, const QVariantList& arguments = {},
                                    const char* from = "client") {
        return ostrel::ask(bus.connection(QLatin1String(from)), service.baseService(),
                           "/org/ostrel/Ostrel", "org.ostrel.Ostrel1", method, arguments);
    }
    // The name of the error, or "done".
    [[nodiscard]] std::string outcome(const char* method, const QVariantList& arguments = {}) {
        const QDBusMessage reply = call(method, arguments);
        return reply.type() == QDBusMessage::ErrorMessage ? reply.errorName().toStdString()
                                                          : "done";
    }
    void change(std::int64_t goal) {
        environment.settingsStore().update(
            [goal](SettingsModel& settings) { settings.dailyGoalBreaks = goal; });
    }
    [[nodiscard]] std::size_t told() {
        const auto messages = monitor.drain();
        return static_cast<std::size_t>(std::ranges::count_if(
            messages,
            [](const std::string& message) { return message.starts_with("StatusChanged"); }));
    }

    PrivateBus bus;
    QDBusConnection service = bus.connection(QStringLiteral("service"));
    BusMonitor monitor{bus, service};
    VirtualPlatform platform{"UTC", WallTime{WallClock::duration{794'915'400}}};
    AppEnvironment environment{platform.platform(seededUuids(1))};
    Control control{{environment,
                     platform.calendar,
                     [this] { return platform.runLoop.wallNow(); },
                     {"en"},
                     {}}};
    std::optional<uint> user = getuid();
    std::unique_ptr<ControlObject> object;
};

TEST_F(ControlObjectTest, ErrorsSayWhoseFaultItIs) {
    EXPECT_EQ(outcome("Skip"), "org.ostrel.Error.Refused");
    EXPECT_EQ(outcome("Break", {QStringLiteral("body")}), "done");
    EXPECT_EQ(outcome("Open", {QStringLiteral("cellar")}), "org.ostrel.Error.InvalidArgument");
    EXPECT_EQ(outcome("Pause"), "org.freedesktop.DBus.Error.InvalidArgs");
    EXPECT_EQ(outcome("Nap"), "org.freedesktop.DBus.Error.UnknownMethod");
}

TEST_F(ControlObjectTest, OtherUsersAndThoseNobodyKnowsAreRefused) {
    const SettingsModel before = *environment.settingsStore().settings();
    for (const std::optional<uint> other : {std::optional<uint>(getuid() + 1), {}}) {
        user = other;
        for (const char* method : {"Status", "Watch", "Resume", "GetSettings", "Skip"}) {
            EXPECT_EQ(outcome(method), kRefusedByTheBus) << method;
        }
        EXPECT_EQ(outcome("SetSetting", {QStringLiteral("strictMode"), QStringLiteral("true")}),
                  kRefusedByTheBus);
    }
    EXPECT_EQ(*environment.settingsStore().settings(), before);
    change(7);
    EXPECT_EQ(told(), 0U);
}

TEST_F(ControlObjectTest, TheStatusIsToldOnceASecondAtMostAndOnlyWhileSomebodyWatches) {
    EXPECT_EQ(call("Watch").signature(), QStringLiteral("s"));
    for (std::int64_t goal = 8; goal < 20; ++goal) {
        change(goal);
    }
    EXPECT_TRUE(runUntil([this] { return told() == 1; }));
    change(20);
    runFor(std::chrono::milliseconds(500));
    EXPECT_EQ(told(), 0U);
    EXPECT_TRUE(runUntil([this] { return told() == 1; }));
    EXPECT_EQ(outcome("Unwatch"), "done");
    change(21);
    runFor(std::chrono::milliseconds(1200));
    EXPECT_EQ(told(), 0U);
}

TEST_F(ControlObjectTest, AWatchEndsWithTheConnectionOfWhoWatches) {
    EXPECT_EQ(call("Watch", {}, "short").signature(), QStringLiteral("s"));
    EXPECT_EQ(call("Watch", {}, "long").signature(), QStringLiteral("s"));
    change(7);
    EXPECT_TRUE(runUntil([this] { return told() == 2; }));
    QDBusConnection::disconnectFromBus(QStringLiteral("short"));
    EXPECT_TRUE(runUntil([this, goal = std::int64_t{8}]() mutable {
        change(goal++);
        return told() == 1;
    }));
}

}  // namespace
}  // namespace ostrel
