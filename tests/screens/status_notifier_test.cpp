#include <memory>

#include "screens/bus_types.h"
#include "screens/label_hosts.h"
#include "screens/status_bus.h"
#include "screens/status_item.h"
#include "support/overlay_bench.h"

namespace ostrel {

constexpr const char* kItem = "org.kde.StatusNotifierItem";
constexpr const char* kPath = "/StatusNotifierItem";
constexpr const char* kProperties = "org.freedesktop.DBus.Properties";

struct StatusNotifierTest : ::testing::Test {
    StatusNotifierTest() {
        bench.engine().setIsOverlayPresented([] { return false; });
        watch();
    }
    void watch(FakeWatcher::Host host = FakeWatcher::Host::present) {
        watcher.reset();
        watcher =
            std::make_unique<FakeWatcher>(bus, QStringLiteral("watcher%1").arg(++watchers), host);
    }
    void waitForItem() {
        EXPECT_TRUE(runUntil([this] { return watcher->items.size() == 1; }));
        EXPECT_TRUE(runUntil([this] { return !toolTip().isEmpty(); }));
    }
    [[nodiscard]] QDBusMessage ask(const char* interface, const char* member,
                                   const QVariantList& arguments, const char* from = "client") {
        return ostrel::ask(bus.connection(QLatin1String(from)), itemBus.baseService(), kPath,
                           interface, member, arguments);
    }
    [[nodiscard]] QVariant property(const char* name, const char* from = "client") {
        const QDBusMessage answer =
            ask(kProperties, "Get", {QString::fromLatin1(kItem), QString::fromLatin1(name)}, from);
        return answer.arguments().value(0).value<QDBusVariant>().variant();
    }
    [[nodiscard]] QString toolTip() { return qdbus_cast<BusToolTip>(property("ToolTip")).title; }
    // The members of what was sent, with how often.
    [[nodiscard]] std::map<std::string, int> sent() {
        std::map<std::string, int> counts;
        for (const std::string& message : monitor.drain()) {
            ++counts[message.substr(0, message.find(' '))];
        }
        return counts;
    }
    void tick(int seconds) {
        for (int i = 0; i < seconds; ++i) {
            bench.engine().tick();
            QCoreApplication::processEvents();
        }
    }

    using Counts = std::map<std::string, int>;
    PrivateBus bus;
    QDBusConnection itemBus = bus.connection(QStringLiteral("item"));
    BusMonitor monitor{bus, itemBus};
    int watchers = 0;
    std::unique_ptr<FakeWatcher> watcher;
    OverlayBench bench;
    DailyCounter counter{bench.counterServices()};
    StatusMenu::Services services{bench.engine(),
                                  bench.session(),
                                  bench.settings(),
                                  bench.overlay(),
                                  counter,
                                  [] { return std::nullopt; },
                                  [] {},
                                  [] {},
                                  [] {},
                                  [] {}};
};

TEST_F(StatusNotifierTest, SendsOneIconAndOneToolTipAMinuteAndNothingElse) {
    const StatusItem item(services, itemBus);
    waitForItem();
    EXPECT_EQ(sent()["RegisterStatusNotifierItem"], 1);
    tick(1);
    EXPECT_EQ(sent(), Counts()) << "a second within the minute";
    tick(599);
    EXPECT_EQ(sent(), (Counts{{"NewIcon", 10}, {"NewToolTip", 10}}));
}

TEST_F(StatusNotifierTest, SendsNothingWhereNobodyShowsIt) {
    watch(FakeWatcher::Host::absent);
    const StatusItem item(services, itemBus);
    ASSERT_TRUE(runUntil([this] { return watcher->items.size() == 1; }));
    (void)sent();
    tick(120);
    EXPECT_EQ(sent(), Counts());
    watcher->bringHost();
    ASSERT_TRUE(runUntil([this] { return !toolTip().isEmpty(); }));
    EXPECT_NE(toolTip().indexOf(QLatin1String("18:00")), -1);
}

TEST_F(StatusNotifierTest, CountsDownBesideTheIconForTheOneWhoReadsThatByName) {
    const StatusItem item(services, itemBus);
    waitForItem();
    EXPECT_EQ(property("XAyatanaLabel", "host"), QStringLiteral("20:00"));
    (void)sent();
    tick(5);
    EXPECT_EQ(sent(), (Counts{{"XAyatanaNewLabel", 5}}));
    EXPECT_EQ(property("XAyatanaLabel", "host"), QStringLiteral("19:55"));

    QDBusConnection::disconnectFromBus(QStringLiteral("host"));
    ASSERT_TRUE(runUntil([this] { return sent().count("XAyatanaNewLabel") == 1; }));
    tick(3);
    EXPECT_EQ(sent(), Counts());
}

TEST_F(StatusNotifierTest, DesktopsThatShowALabelAreKnown) {
    const std::pair<const char*, bool> cases[] = {
        {"GNOME", true}, {"ubuntu:GNOME", true},  {"Unity:Unity7:ubuntu", true},
        {"", false},     {"Budgie:GNOME", false}, {"GNOME-Flashback:GNOME", false},
    };
    for (const auto& [name, isOne] : cases) {
        EXPECT_EQ(LabelHosts::isOneOf(QString::fromLatin1(name)), isOne) << name;
    }
}

TEST_F(StatusNotifierTest, AClickOpensTheMenuAndNothingElseDoes) {
    StatusItem item(services, itemBus);
    waitForItem();
    EXPECT_EQ(errorOf(ask(kItem, "Scroll", {1, QStringLiteral("vertical")})), "");
    EXPECT_EQ(errorOf(ask(kItem, "SecondaryActivate", {1, 1})), "");
    EXPECT_EQ(errorOf(ask(kItem, "Activate", {QStringLiteral("1"), 1})), "InvalidArgs");
    EXPECT_FALSE(item.menu().isVisible());
    EXPECT_EQ(errorOf(ask(kItem, "Activate", {1, 1})), "");
    EXPECT_TRUE(item.menu().isVisible());
    item.menu().close();
}

}  // namespace ostrel
