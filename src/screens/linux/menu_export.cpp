#include "screens/linux/menu_export.h"

#include <QAction>
#include <QDBusError>
#include <QEvent>
#include <QMenu>
#include <utility>

#include "screens/linux/menu_export_properties.h"

namespace ostrel {
namespace {

constexpr int kRoot = 0;

QDBusMessage noSuchItem(const QDBusMessage& call, int id) {
    return call.createErrorReply(QDBusError::InvalidArgs,
                                 QStringLiteral("No menu item has the number %1").arg(id));
}

// An empty list of names stands for all of them.
QVariantMap chosen(const QVariantMap& properties, const QStringList& names) {
    if (names.isEmpty()) {
        return properties;
    }
    QVariantMap found;
    for (const QString& name : names) {
        if (const auto property = properties.constFind(name); property != properties.constEnd()) {
            found[name] = *property;
        }
    }
    return found;
}

QVariantMap differing(const QVariantMap& now, const QVariantMap& before) {
    QVariantMap changed;
    for (auto property = now.begin(); property != now.end(); ++property) {
        if (before.value(property.key()) != property.value()) {
            changed[property.key()] = property.value();
        }
    }
    return changed;
}

QStringList namesGone(const QVariantMap& now, const QVariantMap& before) {
    QStringList names;
    for (const QString& name : before.keys()) {
        if (!now.contains(name)) {
            names.push_back(name);
        }
    }
    return names;
}

}  // namespace

MenuExport::MenuExport(const QDBusConnection& bus, QMenu& menu)
    : BusObject(bus, {kPath, QLatin1String("com.canonical.dbusmenu")}), menu_(menu) {
    constexpr uint kVersion = 3;
    registerBusTypes();
    setValue(QLatin1String("Version"), kVersion);
    setValue(QLatin1String("TextDirection"),
             menu.isRightToLeft() ? QStringLiteral("rtl") : QStringLiteral("ltr"));
    setValue(QLatin1String("Status"), QStringLiteral("normal"));
    setValue(QLatin1String("IconThemePath"), QStringList());
    addMethods();
    tree_ = read();
}

void MenuExport::addMethods() {
    using Handler = QDBusMessage (MenuExport::*)(const QDBusMessage&);
    const auto add = [this](const char* name, const char* takes, const char* returns,
                            Handler handler) {
        addMethod(name, takes, returns,
                  [this, handler](const QDBusMessage& call) { return (this->*handler)(call); });
    };
    add("GetLayout", "parentId:i recursionDepth:i propertyNames:as", "revision:u layout:(ia{sv}av)",
        &MenuExport::getLayout);
    add("GetGroupProperties", "ids:ai propertyNames:as", "properties:a(ia{sv})",
        &MenuExport::getGroupProperties);
    add("GetProperty", "id:i name:s", "value:v", &MenuExport::getProperty);
    add("Event", "id:i eventId:s data:v timestamp:u", "", &MenuExport::handleEvent);
    add("EventGroup", "events:a(isvu)", "idErrors:ai", &MenuExport::handleEvents);
    add("AboutToShow", "id:i", "needUpdate:b", &MenuExport::aboutToShow);
    add("AboutToShowGroup", "ids:ai", "updatesNeeded:ai idErrors:ai",
        &MenuExport::aboutToShowSeveral);
    addSignal("ItemsPropertiesUpdated", "updatedProps:a(ia{sv}) removedProps:a(ias)");
    addSignal("LayoutUpdated", "revision:u parent:i");
}

MenuExport::Tree MenuExport::read() {
    Tree tree;
    tree[kRoot].properties[QStringLiteral("children-display")] = QStringLiteral("submenu");
    readInto(tree, menu_, kRoot);
    return tree;
}

void MenuExport::readInto(Tree& tree, QMenu& menu, int id) {
    menu.installEventFilter(this);
    for (QAction* action : menu.actions()) {
        const int child = idOf(action);
        tree[id].children.push_back(child);
        tree[child].properties = MenuExportProperties::of(*action);
        if (action->menu()) {
            readInto(tree, *action->menu(), child);
        }
    }
}

int MenuExport::idOf(QAction* action) {
    if (const auto known = ids_.constFind(action); known != ids_.constEnd()) {
        return *known;
    }
    const int id = ++lastId_;
    ids_[action] = id;
    actions_[id] = action;
    connect(action, &QObject::destroyed, this, [this, id](const QObject* gone) {
        ids_.remove(gone);
        actions_.erase(id);
    });
    return id;
}

QMenu* MenuExport::menuOf(int id) const {
    if (id == kRoot) {
        return &menu_;
    }
    const auto action = actions_.find(id);
    return action != actions_.end() && action->second ? action->second->menu() : nullptr;
}

bool MenuExport::eventFilter(QObject* watched, QEvent* event) {
    const QEvent::Type type = event->type();
    if (type == QEvent::ActionAdded || type == QEvent::ActionRemoved ||
        type == QEvent::ActionChanged) {
        announceSoon();
    }
    return BusObject::eventFilter(watched, event);
}

void MenuExport::announceSoon() {
    if (!std::exchange(isAnnouncing_, true)) {
        QMetaObject::invokeMethod(
            this, [this] { announce(); }, Qt::QueuedConnection);
    }
}

// Sends what differs from what was sent last; answers whether anything does.
bool MenuExport::announce() {
    isAnnouncing_ = false;
    const Tree before = std::exchange(tree_, read());
    QList<BusMenuProperties> updated;
    QList<BusMenuNames> removed;
    std::vector<int> parents;
    for (const auto& [id, entry] : tree_) {
        const auto old = before.find(id);
        if (old == before.end()) {
            continue;  // comes with its parent's layout
        }
        if (entry.children != old->second.children) {
            parents.push_back(id);
        }
        if (auto changed = differing(entry.properties, old->second.properties);
            !changed.isEmpty()) {
            updated.push_back({id, changed});
        }
        if (auto names = namesGone(entry.properties, old->second.properties); !names.isEmpty()) {
            removed.push_back({id, names});
        }
    }
    if (!updated.isEmpty() || !removed.isEmpty()) {
        sendSignal(QLatin1String("ItemsPropertiesUpdated"),
                   {QVariant::fromValue(updated), QVariant::fromValue(removed)});
    }
    if (!parents.empty()) {
        sendSignal(QLatin1String("LayoutUpdated"),
                   {++revision_, parents.size() == 1 ? parents.front() : kRoot});
    }
    return !updated.isEmpty() || !removed.isEmpty() || !parents.empty();
}

// Lets the menu bring itself up to date, as it does before it shows; answers whether that changed
// anything.
bool MenuExport::refresh(int id) {
    if (QMenu* menu = menuOf(id)) {
        Q_EMIT menu->aboutToShow();
    }
    return announce();
}

// The caller gets its reply before an entry is triggered, which may open windows or end the
// program.
void MenuExport::take(const BusMenuEvent& event) {
    if (event.name == QLatin1String("opened")) {
        refresh(event.id);
    } else if (event.name == QLatin1String("clicked")) {
        const auto found = actions_.find(event.id);
        if (found == actions_.end() || !found->second) {
            return;
        }
        QAction* action = found->second;
        QMetaObject::invokeMethod(
            action,
            [action] {
                if (action->isEnabled() && action->isVisible() && !action->menu()) {
                    action->trigger();
                }
            },
            Qt::QueuedConnection);
    }
}

BusMenuLayout MenuExport::layoutOf(int id, int depth, const QStringList& names) const {
    const Entry& entry = tree_.at(id);
    BusMenuLayout layout{id, chosen(entry.properties, names), {}};
    if (depth != 0) {
        for (const int child : entry.children) {
            layout.children.push_back(layoutOf(child, depth < 0 ? depth : depth - 1, names));
        }
    }
    return layout;
}

QDBusMessage MenuExport::getLayout(const QDBusMessage& call) {
    const QVariantList arguments = call.arguments();
    const int id = arguments[0].toInt();
    announce();
    if (!isThere(id)) {
        return noSuchItem(call, id);
    }
    const BusMenuLayout layout = layoutOf(id, arguments[1].toInt(), arguments[2].toStringList());
    return call.createReply({revision_, QVariant::fromValue(layout)});
}

QDBusMessage MenuExport::getGroupProperties(const QDBusMessage& call) {
    const QVariantList arguments = call.arguments();
    auto ids = qdbus_cast<QList<int>>(arguments[0]);
    const QStringList names = arguments[1].toStringList();
    announce();
    if (ids.isEmpty()) {
        for (const auto& [id, entry] : tree_) {
            ids.push_back(id);
        }
    }
    QList<BusMenuProperties> found;
    for (const int id : ids) {
        if (isThere(id)) {
            found.push_back({id, chosen(tree_.at(id).properties, names)});
        }
    }
    return call.createReply(QVariant::fromValue(found));
}

QDBusMessage MenuExport::getProperty(const QDBusMessage& call) {
    const QVariantList arguments = call.arguments();
    const int id = arguments[0].toInt();
    const QString name = arguments[1].toString();
    announce();
    if (!isThere(id)) {
        return noSuchItem(call, id);
    }
    const QVariantMap& defaults = MenuExportProperties::defaults();
    if (!defaults.contains(name)) {
        return call.createErrorReply(QDBusError::InvalidArgs,
                                     QStringLiteral("No menu item has a property %1").arg(name));
    }
    const QVariant value = tree_.at(id).properties.value(name, defaults[name]);
    return call.createReply(QVariant::fromValue(QDBusVariant(value)));
}

QDBusMessage MenuExport::handleEvent(const QDBusMessage& call) {
    const QVariantList arguments = call.arguments();
    const int id = arguments[0].toInt();
    if (!isThere(id)) {
        return noSuchItem(call, id);
    }
    take({id, arguments[1].toString(), {}, 0});
    return call.createReply();
}

QDBusMessage MenuExport::handleEvents(const QDBusMessage& call) {
    const auto events = qdbus_cast<QList<BusMenuEvent>>(call.arguments().at(0));
    QList<int> unknown;
    for (const BusMenuEvent& event : events) {
        if (isThere(event.id)) {
            take(event);
        } else {
            unknown.push_back(event.id);
        }
    }
    if (!events.isEmpty() && unknown.size() == events.size()) {
        return noSuchItem(call, unknown.front());
    }
    return call.createReply(QVariant::fromValue(unknown));
}

QDBusMessage MenuExport::aboutToShow(const QDBusMessage& call) {
    const int id = call.arguments().at(0).toInt();
    return isThere(id) ? call.createReply(refresh(id)) : noSuchItem(call, id);
}

QDBusMessage MenuExport::aboutToShowSeveral(const QDBusMessage& call) {
    const auto ids = qdbus_cast<QList<int>>(call.arguments().at(0));
    QList<int> changed;
    QList<int> unknown;
    for (const int id : ids) {
        if (!isThere(id)) {
            unknown.push_back(id);
        } else if (refresh(id)) {
            changed.push_back(id);
        }
    }
    if (!ids.isEmpty() && unknown.size() == ids.size()) {
        return noSuchItem(call, unknown.front());
    }
    return call.createReply({QVariant::fromValue(changed), QVariant::fromValue(unknown)});
}

}  // namespace ostrel
