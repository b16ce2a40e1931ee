#include "screens/linux/status_item.h"

#include <QAction>
#include <memory>

#include "screens/linux/bus_types.h"
#include "screens/linux/label_hosts.h"
#include "screens/linux/status_bus.h"
#include "support/overlay_bench.h"

namespace ostrel {

using MenuBarFormatter::Output;
using MenuBarFormatter::Status;

TEST(StatusIcon, ShowsMinutesThenSecondsAndNoTimeWhileNothingRuns) {
    const struct {
        Status status;
        std::int64_t seconds;
        const char* label;
    } cases[] = {
        {Status::running, 1199, "20"}, {Status::running, 60, "1"},  {Status::running, 59, "59"},
        {Status::running, 5, "05"},    {Status::running, -3, "00"}, {Status::running, 5940, "99"},
        {Status::running, 7200, "2h"}, {Status::paused, 1200, ""},
    };
    for (const auto& [status, seconds, label] : cases) {
        Output output;
        output.status = status;
        EXPECT_EQ(StatusIcon::faceOf(output, {seconds, 0}).label.toStdString(), label)
            << nameOf(status) << " " << seconds;
    }
}

struct StatusItemTest : ::testing::Test {
    StatusItemTest() {
        bench.engine().setIsOverlayPresented(
            [this] { return bench.overlay().activeSession()->has_value(); });
    }
    static std::string lines(const QMenu& menu) {
        std::string text;
        for (const QAction* action : menu.actions()) {
            if (action->isVisible() && !action->isSeparator()) {
                text += (text.empty() ? "" : "|") + (action->isEnabled() ? "" : std::string("-")) +
                        action->text().toStdString();
            }
        }
        return text;
    }

    OverlayBench bench;
    DailyCounter counter{bench.counterServices()};
    std::optional<WallTime> workUntil;
    StatusMenu::Services services{bench.engine(),
                                  bench.session(),
                                  bench.settings(),
                                  bench.overlay(),
                                  counter,
                                  [this] { return workUntil; },
                                  [] {},
                                  [] {},
                                  [] {},
                                  [] {}};
};

TEST_F(StatusItemTest, TheMenuSaysWhatTheScheduleIsDoing) {
    StatusMenu menu(services);
    EXPECT_EQ(lines(menu),
              "-Ostrel is on|-Next eye break in 20:00|-Next body break in 50:00|"
              "Start an eye break|Start a body break|Pause|-No break yet "
              "today|Report|Settings|About Ostrel|Quit Ostrel");

    const auto firstLine = [&] {
        menu.refresh();
        return menu.actions().front()->text().toStdString();
    };
    workUntil = bench.now() + std::chrono::hours(8);
    EXPECT_EQ(firstLine(), "On until 17:50");
    bench.engine().pause(PauseReason::schedule);
    EXPECT_EQ(firstLine(), "Off for now");
    bench.engine().pause(PauseReason::focus);
    EXPECT_EQ(firstLine(), "Paused");
    EXPECT_NE(lines(menu).find("|Resume|"), std::string::npos);
    bench.engine().endAllPauses();
    bench.engine().markUserIdle();
    EXPECT_EQ(firstLine(), "Away: the countdown waits for you");
    bench.overlay().present(BreakKind::eye, 20, 0);
    EXPECT_EQ(firstLine(), "A break is on the screen");
    EXPECT_NE(lines(menu).find("|-Start an eye break|"), std::string::npos);
    bench.overlay().close(CloseReason::skipped);
    bench.setUp([](SettingsModel& model) { model.ostrelEnabled = false; });
    EXPECT_EQ(firstLine(), "Breaks are switched off");
}

constexpr const char* kItem = "org.kde.StatusNotifierItem";
constexpr const char* kPath = "/StatusNotifierItem";
constexpr const char* kProperties = "org.freedesktop.DBus.Properties";

struct StatusNotifierTest : StatusItemTest {
    StatusNotifierTest() { watch(); }
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

}  // namespace ostrel
