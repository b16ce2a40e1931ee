#include "screens/menu_export.h"

#include <QActionGroup>
#include <QMenu>
#include <limits>

#include "screens/menu_export_properties.h"
#include "screens/status_bus.h"

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
        QObject::connect(quit, &QAction::triggered, &menu, [this] { ++quits; });
        QObject::connect(status, &QAction::triggered, &menu, [this] { ++quits; });
        QObject::connect(later, &QAction::triggered, &menu, [this] { ++quits; });
    }
    [[nodiscard]] QDBusMessage ask(const char* member, const QVariantList& arguments) {
        return ostrel::ask(bus.connection(text("client")), itemBus.baseService(), "/MenuBar", kMenu,
                           member, arguments);
    }
    [[nodiscard]] BusMenuLayout layout(int id = 0, int depth = -1, const QStringList& names = {}) {
        return qdbus_cast<BusMenuLayout>(ask("GetLayout", {id, depth, names}).arguments().at(1));
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
    [[nodiscard]] std::string sent() {
        QCoreApplication::processEvents();
        std::string all;
        for (const std::string& message : monitor.drain()) {
            all += (all.empty() ? "" : "|") + message;
        }
        return all;
    }
    void click(int id) {
        EXPECT_EQ(errorOf(ask("Event", event(id, "clicked"))), "") << id;
        QCoreApplication::processEvents();
    }
    static QVariantList event(int id, const char* name) {
        return {id, text(name), QVariant::fromValue(QDBusVariant(0)), 0U};
    }

    PrivateBus bus;
    QDBusConnection itemBus = bus.connection(text("item"));
    QMenu menu;
    QAction* status = menu.addAction(text("In 20:00"));
    QMenu* pauses = menu.addMenu(text("&Pause"));
    QAction* hour = pauses->addAction(text("An_hour"));
    QAction* later = menu.addAction(text("Later"));
    QAction* quit = menu.addAction(text("&Quit"));
    int quits = 0;
    MenuExport menuExport{itemBus, menu};
    BusMonitor monitor{bus, itemBus};
};

TEST_F(MenuExportTest, LabelsMarkTheirMnemonicAsTheProtocolHasIt) {
    const std::pair<const char*, const char*> cases[] = {
        {"Quit", "Quit"},
        {"&Quit", "_Quit"},
        {"a_b", "a__b"},
        {"This && that", "This & that"},
        {"Save\tCtrl+S", "Save"},
        {"Ends in &", "Ends in "},
        {"", ""},
    };
    for (const auto& [ours, theirs] : cases) {
        EXPECT_EQ(MenuExportProperties::label(text(ours)).toStdString(), theirs) << ours;
    }
}

TEST_F(MenuExportTest, TheLayoutIsTheMenu) {
    EXPECT_EQ(describe(layout()), "1 In 20:00, 2 _Pause(3 An__hour), 4 Later, 5 _Quit, 6 -");
    EXPECT_EQ(describe(layout(0, 1)), "1 In 20:00, 2 _Pause, 4 Later, 5 _Quit, 6 -");
    EXPECT_EQ(describe(layout(2)), "3 An__hour");
    EXPECT_EQ(describe(layout(0, 0)), "");

    auto* kinds = new QActionGroup(&menu);
    for (QAction* action : {hour, quit}) {
        action->setCheckable(true);
        kinds->addAction(action);
    }
    later->setCheckable(true);
    quit->setChecked(true);
    const struct {
        int id;
        const char* name;
        QVariant value;
    } cases[] = {
        {0, "children-display", text("submenu")},
        {1, "enabled", false},
        {1, "visible", true},
        {2, "children-display", text("submenu")},
        {4, "visible", false},
        {4, "toggle-type", text("checkmark")},
        {5, "toggle-type", text("radio")},
        {5, "toggle-state", 1},
        {3, "toggle-state", 0},
        {1, "toggle-state", -1},
        {6, "type", text("separator")},
        {1, "type", text("standard")},
    };
    for (const auto& [id, name, value] : cases) {
        EXPECT_EQ(
            ask("GetProperty", {id, text(name)}).arguments().at(0).value<QDBusVariant>().variant(),
            value)
            << id << " " << name;
    }
    const auto group = qdbus_cast<QList<BusMenuProperties>>(
        ask("GetGroupProperties", {QVariant::fromValue(QList<int>{1, 99, 3}),
                                   QStringList{text("label"), text("nothing")}})
            .arguments()
            .at(0));
    ASSERT_EQ(group.size(), 2);
    EXPECT_EQ(group[0].properties, (QVariantMap{{text("label"), text("In 20:00")}}));
    EXPECT_EQ(group[1].id, 3);
}

TEST_F(MenuExportTest, SendsOnceATurnWhatDiffersAndNothingElse) {
    (void)sent();
    status->setText(text("In 20:00"));
    menu.setTitle(text("Ostrel"));
    EXPECT_EQ(sent(), "");

    status->setText(text("In 19:00"));
    status->setText(text("In 18:00"));
    status->setEnabled(true);
    later->setVisible(true);
    const std::string changes = sent();
    EXPECT_EQ(changes.find('|'), std::string::npos) << "one message: " << changes;
    EXPECT_TRUE(changes.starts_with("ItemsPropertiesUpdated")) << changes;
    EXPECT_NE(changes.find("In 18:00"), std::string::npos) << changes;
    EXPECT_NE(changes.find("string \"enabled\""), std::string::npos) << "goes back: " << changes;
    EXPECT_EQ(changes.find("uit"), std::string::npos) << "unchanged: " << changes;

    quit->setVisible(false);
    quit->setVisible(true);
    EXPECT_EQ(sent(), "") << "as it was";

    pauses->addAction(text("For good"));
    const std::string added = sent();
    EXPECT_TRUE(added.starts_with("LayoutUpdated uint32 3 int32 2")) << added;
    EXPECT_EQ(describe(layout(2)), "3 An__hour, 7 For good");
}

TEST_F(MenuExportTest, AnEntryKeepsItsNumberAndNoOtherEverGetsIt) {
    menu.removeAction(status);
    menu.addAction(status);
    EXPECT_EQ(describe(layout()), "2 _Pause(3 An__hour), 4 Later, 5 _Quit, 6 -, 1 In 20:00");
    delete later;
    menu.addAction(text("Newer"));
    EXPECT_EQ(describe(layout()), "2 _Pause(3 An__hour), 5 _Quit, 6 -, 1 In 20:00, 7 Newer");
    EXPECT_EQ(errorOf(ask("Event", event(4, "clicked"))), "InvalidArgs");
}

TEST_F(MenuExportTest, AClickTriggersWhatAPersonCouldClick) {
    click(1);
    click(2);
    click(4);
    EXPECT_EQ(quits, 0) << "disabled, a submenu, hidden";
    click(5);
    EXPECT_EQ(quits, 1);
    for (const char* other : {"hovered", "opened", "closed", "no such event"}) {
        EXPECT_EQ(errorOf(ask("Event", event(5, other))), "");
    }
    EXPECT_EQ(quits, 1);

    const QList<BusMenuEvent> events{{5, text("clicked"), QDBusVariant(0), 0},
                                     {99, text("clicked"), QDBusVariant(0), 0}};
    const QDBusMessage answer = ask("EventGroup", {QVariant::fromValue(events)});
    EXPECT_EQ(qdbus_cast<QList<int>>(answer.arguments().at(0)), QList<int>{99});
    EXPECT_EQ(quits, 2);
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

TEST_F(MenuExportTest, IsBroughtUpToDateBeforeItShows) {
    int minutes = 20;
    QObject::connect(&menu, &QMenu::aboutToShow, &menu,
                     [&] { status->setText(text("In %1:00").arg(minutes)); });
    const auto aboutToShow = [this](int id) {
        return ask("AboutToShow", {id}).arguments().at(0).toBool();
    };
    EXPECT_FALSE(aboutToShow(0));
    minutes = 19;
    EXPECT_TRUE(aboutToShow(0));
    EXPECT_TRUE(describe(layout()).starts_with("1 In 19:00"));
    EXPECT_FALSE(aboutToShow(2));
    minutes = 18;
    const QDBusMessage answer =
        ask("AboutToShowGroup", {QVariant::fromValue(QList<int>{2, 0, 99})});
    EXPECT_EQ(qdbus_cast<QList<int>>(answer.arguments().at(0)), QList<int>{0});
    EXPECT_EQ(qdbus_cast<QList<int>>(answer.arguments().at(1)), QList<int>{99});
    minutes = 17;
    (void)ask("Event", event(0, "opened"));
    EXPECT_TRUE(describe(layout()).starts_with("1 In 17:00"));
}

TEST_F(MenuExportTest, NonsenseGetsAnError) {
    const QVariant noEvents =
        QVariant::fromValue(QList<BusMenuEvent>{{-1, text("clicked"), QDBusVariant(0), 0}});
    const std::pair<const char*, QVariantList> cases[] = {
        {"GetLayout", {99, -1, QStringList()}},
        {"GetLayout", {-1, -1, QStringList()}},
        {"GetLayout", {0, -1}},
        {"GetLayout", {text("0"), -1, QStringList()}},
        {"GetProperty", {std::numeric_limits<int>::max(), text("label")}},
        {"GetProperty", {1, text("mood")}},
        {"GetGroupProperties", {QStringList(), QStringList()}},
        {"Event", event(std::numeric_limits<int>::min(), "clicked")},
        {"Event", {1}},
        {"EventGroup", {noEvents}},
        {"EventGroup", {QVariant::fromValue(QList<int>{1})}},
        {"AboutToShow", {7}},
        {"AboutToShow", {0U}},
        {"AboutToShowGroup", {QVariant::fromValue(QList<int>{7, 8})}},
    };
    for (const auto& [member, arguments] : cases) {
        EXPECT_EQ(errorOf(ask(member, arguments)), "InvalidArgs") << member;
    }
    EXPECT_EQ(errorOf(ask("Dance", {})), "UnknownMethod");
    EXPECT_EQ(describe(layout(0, std::numeric_limits<int>::min())), describe(layout()));
}

}  // namespace ostrel
