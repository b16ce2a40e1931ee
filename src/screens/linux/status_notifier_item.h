#pragma once

#include <QDBusServiceWatcher>
#include <QIcon>
#include <QString>

#include "base/signal.h"
#include "screens/linux/bus_object.h"

namespace ostrel {

// The status item as panels read it: org.kde.StatusNotifierItem. Setting what is set already sends
// nothing.
class StatusNotifierItem : public BusObject {
  public:
    // Its menu is an object at `menuPath` on the same connection.
    StatusNotifierItem(const QDBusConnection& bus, const QString& menuPath);

    void setIcon(const QIcon& icon);
    void setToolTip(const QString& toolTip);

    // A text beside the icon, empty for none.
    void setLabel(const QString& label);

    // Whether somebody runs who has asked for the label by its name, as only those do who show it.
    [[nodiscard]] bool isLabelRead() const { return !labelReaders_.watchedServices().isEmpty(); }

    Signal<> labelReadersChanged;

    // The user asks for the menu.
    Signal<> menuRequested;

  private:
    void handleRead(const QString& name, const QString& asker) override;
    void fillIn(const QString& menuPath);

    QDBusServiceWatcher labelReaders_;
};

}  // namespace ostrel
