#pragma once

#include <QHash>
#include <QPointer>
#include <QVariantMap>
#include <map>
#include <vector>

#include "screens/linux/bus_object.h"
#include "screens/linux/bus_types.h"

class QAction;
class QMenu;

namespace ostrel {

// A menu and its submenus as panels and scripts read them: com.canonical.dbusmenu.
//
// What changes is gathered and sent once per turn of the event loop, and only what differs. An
// entry keeps its number for as long as it lives.
class MenuExport : public BusObject {
  public:
    static constexpr QLatin1String kPath{"/MenuBar"};

    // The menu outlives this.
    MenuExport(const QDBusConnection& bus, QMenu& menu);

    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    struct Entry {
        QVariantMap properties;  // those that differ from the protocol's defaults
        std::vector<int> children;
    };
    using Tree = std::map<int, Entry>;

    [[nodiscard]] Tree read();
    void readInto(Tree& tree, QMenu& menu, int id);
    [[nodiscard]] int idOf(QAction* action);
    [[nodiscard]] bool isThere(int id) const { return tree_.count(id) != 0; }
    [[nodiscard]] QMenu* menuOf(int id) const;

    void announceSoon();
    bool announce();
    bool refresh(int id);
    void take(const BusMenuEvent& event);

    void addMethods();
    [[nodiscard]] QDBusMessage getLayout(const QDBusMessage& call);
    [[nodiscard]] QDBusMessage getGroupProperties(const QDBusMessage& call);
    [[nodiscard]] QDBusMessage getProperty(const QDBusMessage& call);
    [[nodiscard]] QDBusMessage handleEvent(const QDBusMessage& call);
    [[nodiscard]] QDBusMessage handleEvents(const QDBusMessage& call);
    [[nodiscard]] QDBusMessage aboutToShow(const QDBusMessage& call);
    [[nodiscard]] QDBusMessage aboutToShowSeveral(const QDBusMessage& call);
    [[nodiscard]] BusMenuLayout layoutOf(int id, int depth, const QStringList& names) const;

    QMenu& menu_;
    QHash<const QObject*, int> ids_;
    std::map<int, QPointer<QAction>> actions_;
    int lastId_ = 0;
    uint revision_ = 1;
    bool isAnnouncing_ = false;
    Tree tree_;  // as it was sent last
};

}  // namespace ostrel
