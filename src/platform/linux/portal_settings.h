#pragma once

#include <QDBusConnection>
#include <QDBusVariant>
#include <QObject>
#include <QVariant>
#include <memory>

#include "base/signal.h"

class QDBusPendingCallWatcher;
class QDBusServiceWatcher;

namespace ostrel {

// The desktop's settings, as org.freedesktop.portal.Settings tells them: the groups
// "org.freedesktop.appearance", "org.gnome.desktop.interface" and "org.kde.kdeglobals.KDE".
//
// Nothing here waits for an answer. Where there is no portal nothing arrives; one that appears
// later is asked then.
class PortalSettings : public QObject {
    Q_OBJECT

  public:
    explicit PortalSettings(const QDBusConnection& bus = QDBusConnection::sessionBus());
    ~PortalSettings() override;

    // From now on over this bus: the one before is gone. What arrived still counts.
    void adopt(const QDBusConnection& bus);

    // Group, key, value: each one that the portal has, and each change. A value may be anything.
    Signal<const QString&, const QString&, const QVariant&> arrived;

  private:
    Q_SLOT void take(const QString& group, const QString& key, const QDBusVariant& value);
    void askForAll();
    void takeAll(const QDBusPendingCallWatcher& answer);
    void tell(const QString& group, const QString& key, QVariant value);

    QDBusConnection bus_;
    std::unique_ptr<QDBusServiceWatcher> watcher_;
};

}  // namespace ostrel
