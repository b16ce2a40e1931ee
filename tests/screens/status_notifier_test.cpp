#include <QDBusObjectPath>
#include <algorithm>
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

TEST_F(StatusNotifierTest, RegistersByItsNameWithEveryWatcherThatComes) {
    const StatusItem item(services, itemBus);
    const QString name =
        QStringLiteral("org.kde.StatusNotifierItem-%1-1").arg(QCoreApplication::applicationPid());
    for (int restart = 0; restart < 3; ++restart) {
        waitForItem();
        EXPECT_EQ(watcher->items, QStringList{name}) << restart;
        EXPECT_EQ(bus.connection(QStringLiteral("client")).interface()->serviceOwner(name).value(),
                  itemBus.baseService());
        watch();
    }
}

TEST_F(StatusNotifierTest, SaysAllThatAHostAsksFor) {
    const StatusItem item(services, itemBus);
    waitForItem();
    const auto all = qdbus_cast<QVariantMap>(
        ask(kProperties, "GetAll", {QString::fromLatin1(kItem)}).arguments().at(0));
    EXPECT_EQ(all[QStringLiteral("Category")], QStringLiteral("ApplicationStatus"));
    EXPECT_EQ(all[QStringLiteral("Id")], QStringLiteral("ostrel"));
    EXPECT_EQ(all[QStringLiteral("Status")], QStringLiteral("Active"));
    EXPECT_EQ(all[QStringLiteral("ItemIsMenu")], true);
    EXPECT_EQ(all[QStringLiteral("XAyatanaLabel")], QString());
    EXPECT_EQ(all[QStringLiteral("Menu")].value<QDBusObjectPath>().path(),
              QStringLiteral("/MenuBar"));
    EXPECT_EQ(toolTip().toStdString(), "Ostrel\nNext eye break in 20:00\nNext body break in 50:00");
    const auto icons = qdbus_cast<QList<BusPixmap>>(all[QStringLiteral("IconPixmap")]);
    ASSERT_FALSE(icons.isEmpty());
    for (const BusPixmap& icon : icons) {
        ASSERT_EQ(icon.bytes.size(), 4 * icon.width * icon.height);
        // Alpha comes first: nothing in the corner, all of the disc in the middle of the upper
        // edge.
        EXPECT_EQ(icon.bytes[0], '\0') << icon.width;
        EXPECT_NE(icon.bytes[icon.bytes.size() / 2 + qsizetype{2} * icon.width], '\0');
    }
}

TEST_F(StatusNotifierTest, SendsOneIconAndOneToolTipAMinuteAndNothingElse) {
    const StatusItem item(services, itemBus);
    waitForItem();
    EXPECT_EQ(sent()["RegisterStatusNotifierItem"], 1);
    tick(1);
    EXPECT_EQ(sent(), Counts()) << "a second within the minute";
    tick(599);
    EXPECT_EQ(sent(), (Counts{{"NewIcon", 10}, {"NewToolTip", 10}}));
    // The body break's seconds are not the eye break's now.
    bench.engine().postpone(BreakKind::eye);
    tick(30);
    (void)sent();
    tick(300);
    EXPECT_EQ(sent(), (Counts{{"NewIcon", 5}, {"NewToolTip", 5}}));
}

TEST_F(StatusNotifierTest, SendsNothingWhereNobodyShowsIt) {
    watch(FakeWatcher::Host::absent);
    const StatusItem item(services, itemBus);
    ASSERT_TRUE(runUntil([this] { return watcher->items.size() == 1; }));
    (void)sent();
    tick(120);
    EXPECT_EQ(sent(), Counts());
    watcher->setHost(FakeWatcher::Host::present);
    ASSERT_TRUE(runUntil([this] { return !toolTip().isEmpty(); }));
    EXPECT_NE(toolTip().indexOf(QLatin1String("18:00")), -1);
}

TEST_F(StatusNotifierTest, CountsDownBesideTheIconForTheOneWhoReadsThatByName) {
    const StatusItem item(services, itemBus);
    waitForItem();
    tick(1);
    const auto withNumber = qdbus_cast<QList<BusPixmap>>(property("IconPixmap"));
    EXPECT_EQ(property("XAyatanaLabel", "host"), QStringLiteral("19:59"));
    EXPECT_NE(qdbus_cast<QList<BusPixmap>>(property("IconPixmap")), withNumber);
    (void)sent();
    tick(5);
    EXPECT_EQ(sent(), (Counts{{"XAyatanaNewLabel", 5}}));
    EXPECT_EQ(property("XAyatanaLabel", "host"), QStringLiteral("19:54"));
    bench.engine().pause(PauseReason::focus);
    EXPECT_EQ(property("XAyatanaLabel", "host"), QString()) << "the pause is in the icon";
    bench.engine().endAllPauses();
    (void)sent();

    QDBusConnection::disconnectFromBus(QStringLiteral("host"));
    ASSERT_TRUE(runUntil([this] { return sent().count("XAyatanaNewLabel") == 1; }));
    tick(3);
    EXPECT_EQ(sent(), Counts());
}

TEST_F(StatusNotifierTest, DesktopsThatShowALabelAreKnown) {
    const std::pair<const char*, bool> cases[] = {
        {"GNOME", true},
        {"ubuntu:GNOME", true},
        {"Unity:Unity7:ubuntu", true},
        {"Budgie:GNOME", false},
        {"KDE", false},
        {"XFCE", false},
        {"LXQt", false},
        {"", false},
        {"GNOME-Flashback:GNOME", false},
    };
    for (const auto& [name, isOne] : cases) {
        EXPECT_EQ(LabelHosts::isOneOf(QString::fromLatin1(name)), isOne) << name;
    }
    qputenv("XDG_CURRENT_DESKTOP", "ubuntu:GNOME");
    const StatusItem item(services, itemBus);
    qunsetenv("XDG_CURRENT_DESKTOP");
    waitForItem();
    const auto all = qdbus_cast<QVariantMap>(
        ask(kProperties, "GetAll", {QString::fromLatin1(kItem)}).arguments().at(0));
    EXPECT_EQ(all[QStringLiteral("XAyatanaLabel")], QStringLiteral("20:00"));
    EXPECT_EQ(all[QStringLiteral("XAyatanaLabelGuide")], QStringLiteral("00:00"));
}

TEST_F(StatusNotifierTest, ALossIsToldOnceThereIsAStatusArea) {
    watcher.reset();
    StatusItem item(services, itemBus);
    item.tellNotSaved();
    EXPECT_EQ(sent().count("Notify"), 0U);
    watch();
    waitForItem();
    EXPECT_EQ(sent()["Notify"], 1);
}

TEST_F(StatusNotifierTest, AClickOpensTheMenuAndNonsenseGetsAnError) {
    StatusItem item(services, itemBus);
    waitForItem();
    EXPECT_EQ(errorOf(ask(kItem, "Scroll", {1, QStringLiteral("vertical")})), "");
    EXPECT_EQ(errorOf(ask(kItem, "SecondaryActivate", {1, 1})), "");
    EXPECT_FALSE(item.menu().isVisible());
    EXPECT_EQ(errorOf(ask(kItem, "Activate", {1, 1})), "");
    EXPECT_TRUE(item.menu().isVisible());
    item.menu().close();

    const QString interface = QString::fromLatin1(kItem);
    const struct {
        const char* interface = "";
        const char* member = "";
        QVariantList arguments;
        const char* error = "";
    } cases[] = {
        {kItem, "Activate", {}, "InvalidArgs"},
        {kItem, "Activate", {QStringLiteral("1"), 1}, "InvalidArgs"},
        {kItem, "Dance", {}, "UnknownMethod"},
        {"org.example.Other", "Activate", {1, 1}, "UnknownMethod"},
        {kProperties, "Get", {interface, QStringLiteral("Mood")}, "UnknownProperty"},
        {kProperties, "Get", {interface}, "UnknownMethod"},
        {kProperties, "GetAll", {QStringLiteral("org.example.Other")}, "UnknownInterface"},
        {kProperties,
         "Set",
         {interface, QStringLiteral("Id"), QVariant::fromValue(QDBusVariant(1))},
         "PropertyReadOnly"},
    };
    for (const auto& [where, member, arguments, error] : cases) {
        EXPECT_EQ(errorOf(ask(where, member, arguments)), error) << member;
    }
}

TEST_F(StatusNotifierTest, LosingTheBusIsSurvived) {
    const StatusItem item(services, itemBus);
    waitForItem();
    bus.end();
    tick(120);
    EXPECT_NE(item.toolTip().indexOf(QLatin1String("18:00")), -1);
}

}  // namespace ostrel
