#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QSet>
#include <QString>
#include <functional>
#include <vector>

#include "platform/api/capability.h"

namespace ostrel {

// What there is of a Linux desktop.
struct DesktopFacts {
    bool hasX = false;
    bool isXwayland = false;  // see isXInsideWayland()
    bool hasIdleTime = false;
    bool hasActiveWindow = false;
    bool hasTray = false;  // of the XEMBED kind
    bool hasSoundServer = false;
    QSet<QString> names;  // on both buses
    bool canStartNotifications = false;
    QString notificationServer;
    QString notificationVendor;
};

// One entry for each topic, in their order.
[[nodiscard]] std::vector<Capability> capabilitiesWith(const DesktopFacts& facts);

// Asks the desktop at hand and calls `tell` once, from the event loop. A service that hangs is
// waited for a second at most. Gone with `receiver`. Needs no display.
void findCapabilities(const QDBusConnection& session, const QDBusConnection& system,
                      QObject* receiver, std::function<void(std::vector<Capability>)> tell);

}  // namespace ostrel
