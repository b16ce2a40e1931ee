#include "screens/linux/menu_export.h"

#include <QMenu>
#include <limits>

#include "screens/linux/status_bus.h"

namespace ostrel {

constexpr const char* kMenu = "com.canonical.dbusmenu";

QString text(const char* latin1) {
    return QString::fromLatin1(latin1);
}

struct MenuExportTest : ::testing::Test {
    MenuExportTest() {
        status->setEnabled(false);
        menu.addSeparator();
        later->setVisible(false);
        for (QAction* action : {quit, status, later}) {
            QObject::connect(action, &QAction::triggered, &menu, [this] { ++triggered; });
        }
    }
    [[nodiscard]] QDBusMessage ask(const char* member, const QVariantList& arguments) {
        return ostrel::ask(bus.connection(text("client")), itemBus.baseService(), "/MenuBar", kMenu,
                           member, arguments);
    }
    // "1 label(children)" of each entry.
    [[nodiscard]] static std::string describe(const BusMenuLayout& item) {
        std::string description;
        for (const BusMenuLayout& child : item.children) {
            description +=
                (description.empty() ? "" : ", ") + std::to_string(child.id) + " " +
                child.properties.value(text("label"), text("-")).toString().toStdString();
            if (!child.children.isEmpty()) {
                description += "(" + describe(child) + ")";
            }
        }
        return description;
    }
    [[nodiscard]] std::string layout(int id = 0, int depth = -1) {
        const QDBusMessage answer = ask("GetLayout", {id, depth, QStringList()});
        return describe(qdbus_cast<BusMenuLayout>(answer.arguments().at(1)));
    }
    [[nodiscard]] std::string sent() {
        QCoreApplication::processEvents();
        std::string all;
        for (const std::string& message : monitor.drain()) {
            all += (all.empty() ? "" : "|") + message;
        }
        return all;
    }
    static QVariantList event(int id, const char* name) {
        return {id, text(name), QVariant::fromValue(QDBusVariant(0)), 0U};
    }

    PrivateBus bus;
    QDBusConnection itemBus = bus.connection(text("item"));
    QMenu menu;
    QAction* status = menu.addAction(text("In 20:00"));
    QMenu* pauses = menu.addMenu(text("&Pause"));
    QAction* hour = pauses->addAction(text("An_hour && more\tCtrl+H"));
    QAction* later = menu.addAction(text("Later"));
    QAction* quit = menu.addAction(text("&Quit"));
    int triggered = 0;
    MenuExport menuExport{itemBus, menu};
    BusMonitor monitor{bus, itemBus};
};

TEST_F(MenuExportTest, TheLayoutIsTheMenuAndNoNumberIsEverGivenTwice) {
    EXPECT_EQ(layout(), "1 In 20:00, 2 _Pause(3 An__hour & more), 4 Later, 5 _Quit, 6 -");
    EXPECT_EQ(layout(0, 1), "1 In 20:00, 2 _Pause, 4 Later, 5 _Quit, 6 -");
    const std::tuple<int, const char*, QVariant> properties[] = {
        {1, "enabled", false},
        {4, "visible", false},
        {6, "type", text("separator")},
        {2, "children-display", text("submenu")}};
    for (const auto& [id, name, value] : properties) {
        const QDBusMessage answer = ask("GetProperty", {id, text(name)});
        EXPECT_EQ(answer.arguments().at(0).value<QDBusVariant>().variant(), value) << name;
    }
    menu.removeAction(status);
    menu.addAction(status);
    delete later;
    menu.addAction(text("Newer"));
    EXPECT_EQ(layout(), "2 _Pause(3 An__hour & more), 5 _Quit, 6 -, 1 In 20:00, 7 Newer");
    EXPECT_EQ(errorOf(ask("Event", event(4, "clicked"))), "InvalidArgs");
}

TEST_F(MenuExportTest, SendsOnceATurnWhatDiffersAndNothingElse) {
    (void)sent();
    status->setText(text("In 20:00"));
    menu.setTitle(text("Ostrel"));
    quit->setVisible(false);
    quit->setVisible(true);
    EXPECT_EQ(sent(), "") << "as it was";

    status->setText(text("In 19:00"));
    status->setText(text("In 18:00"));
    status->setEnabled(true);
    const std::string changes = sent();
    EXPECT_EQ(changes.find('|'), std::string::npos) << "one message: " << changes;
    EXPECT_TRUE(changes.starts_with("ItemsPropertiesUpdated")) << changes;
    EXPECT_NE(changes.find("In 18:00"), std::string::npos) << changes;
    EXPECT_EQ(changes.find("uit"), std::string::npos) << "unchanged: " << changes;

    pauses->addAction(text("For good"));
    const std::string added = sent();
    EXPECT_TRUE(added.starts_with("LayoutUpdated uint32 3 int32 2")) << added;
}

TEST_F(MenuExportTest, AClickTriggersWhatAPersonCouldClick) {
    const std::pair<int, const char*> inVain[] = {
        {1, "clicked"}, {2, "clicked"}, {4, "clicked"}, {5, "hovered"}, {5, "no such event"}};
    for (const auto& [id, name] : inVain) {
        EXPECT_EQ(errorOf(ask("Event", event(id, name))), "") << id;
        QCoreApplication::processEvents();
        EXPECT_EQ(triggered, 0) << id;
    }
    const QList<BusMenuEvent> events{{5, text("clicked"), QDBusVariant(0), 0},
                                     {99, text("clicked"), QDBusVariant(0), 0}};
    const QDBusMessage answer = ask("EventGroup", {QVariant::fromValue(events)});
    EXPECT_EQ(qdbus_cast<QList<int>>(answer.arguments().at(0)), QList<int>{99});
    EXPECT_TRUE(runUntil([this] { return triggered == 1; }));
}

TEST_F(MenuExportTest, TheCallerNeedNotWaitForWhatAnEntryDoes) {
    QDBusMessage call = QDBusMessage::createMethodCall(itemBus.baseService(), text("/MenuBar"),
                                                       text(kMenu), text("Event"));
    call.setArguments(event(5, "clicked"));
    const QDBusPendingCall pending = bus.connection(text("client")).asyncCall(call);
    bool isAnswered = false;
    QObject::connect(quit, &QAction::triggered, &menu,
                     [&] { isAnswered = runUntil([&] { return pending.isFinished(); }); });
    EXPECT_TRUE(runUntil([&] { return isAnswered; }));
}

TEST_F(MenuExportTest, NonsenseGetsAnError) {
    const std::pair<const char*, QVariantList> cases[] = {
        {"GetLayout", {text("0"), -1, QStringList()}},
        {"GetProperty", {std::numeric_limits<int>::max(), text("label")}},
        {"Event", event(std::numeric_limits<int>::min(), "clicked")},
        {"EventGroup", {QVariant::fromValue(QList<int>{1})}},
    };
    for (const auto& [member, arguments] : cases) {
        EXPECT_EQ(errorOf(ask(member, arguments)), "InvalidArgs") << member;
    }
    EXPECT_EQ(layout(0, std::numeric_limits<int>::min()), layout());
}

}  // namespace ostrel
