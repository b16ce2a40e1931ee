#include "screens/accessible_popups.h"

#include <QAccessibleObject>
#include <QApplication>
#include <QMenu>
#include <QVector>
#include <algorithm>

namespace ostrel {
namespace {

class AccessibleApplication : public QAccessibleApplication {
  public:
    [[nodiscard]] int childCount() const override {
        return QAccessibleApplication::childCount() + static_cast<int>(popups().size());
    }

    [[nodiscard]] QAccessibleInterface* child(int index) const override {
        const int windows = QAccessibleApplication::childCount();
        return index < windows ? QAccessibleApplication::child(index)
                               : popups().value(index - windows);
    }

    [[nodiscard]] int indexOfChild(const QAccessibleInterface* child) const override {
        const int index = QAccessibleApplication::indexOfChild(child);
        if (index >= 0) {
            return index;
        }
        const auto all = popups();
        const auto popup = std::find(all.begin(), all.end(), child);
        return popup == all.end()
                   ? -1
                   : QAccessibleApplication::childCount() + static_cast<int>(popup - all.begin());
    }

  private:
    // Submenus are found below their menus.
    static QVector<QAccessibleInterface*> popups() {
        QVector<QAccessibleInterface*> found;
        for (QWidget* window : QApplication::topLevelWidgets()) {
            const auto* menu = qobject_cast<QMenu*>(window);
            if (menu && menu->isVisible() &&
                qobject_cast<QMenu*>(menu->parentWidget()) == nullptr) {
                found.push_back(QAccessible::queryAccessibleInterface(window));
            }
        }
        return found;
    }
};

QAccessibleInterface* makeAccessible(const QString& className, QObject*) {
    return className == QLatin1String("QApplication") ? new AccessibleApplication : nullptr;
}

}  // namespace

void installAccessiblePopups() {
    QAccessible::installFactory(makeAccessible);
}

}  // namespace ostrel
