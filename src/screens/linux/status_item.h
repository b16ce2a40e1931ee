#pragma once

#include <QDBusConnection>
#include <QString>
#include <memory>
#include <optional>
#include <vector>

#include "base/subscription.h"
#include "menubar/menu_bar_formatter.h"
#include "screens/linux/menu_export.h"
#include "screens/status_icon.h"
#include "screens/status_menu.h"
#include "screens/linux/status_notifier_item.h"
#include "screens/linux/status_notifier_registration.h"
#include "screens/status_presence.h"
#include "screens/linux/tray_watch.h"

class QSystemTrayIcon;

namespace ostrel {

// The icon in the desktop's status area, with its tooltip and its menu.
//
// It is a StatusNotifierItem wherever there is a host for such, and an icon in the older X11 tray
// where there is not; it follows as these come and go. Where there is neither, the menu can still
// be brought up. The countdown is a text beside the icon where the desktop shows one, else it is in
// the icon. Times above a minute are rounded to whole minutes, so that icon and tooltip change once
// a minute, not once a second.
class StatusItem : public StatusPresence {
  public:
    explicit StatusItem(const StatusMenu::Services& services,
                        const QDBusConnection& bus = QDBusConnection::sessionBus());
    StatusItem(const StatusItem&) = delete;
    StatusItem& operator=(const StatusItem&) = delete;
    ~StatusItem() override;

    void popUpMenu() override;
    void tellNotSaved() override;

    [[nodiscard]] QString toolTip() const { return toolTip_; }
    [[nodiscard]] StatusMenu& menu() { return menu_; }

  private:
    [[nodiscard]] bool isHosted() const { return registration_.hasHost().value_or(false); }
    void settle();
    void makeTrayIcon();
    void refresh();
    void show(const StatusIcon::Face& face, const QString& label);
    void notify(const QString& title, const QString& text);

    StatusMenu::Services services_;
    QDBusConnection bus_;
    StatusMenu menu_;
    MenuExport menuExport_;
    StatusNotifierItem item_;
    StatusNotifierRegistration registration_;
    bool isLabelDesktop_;
    std::unique_ptr<QSystemTrayIcon> trayIcon_;
    std::optional<StatusIcon::Face> face_;  // as it is shown
    QString toolTip_;
    bool isUnsavedTold_ = true;
    TrayWatch trayWatch_;
    std::vector<Subscription> subscriptions_;
};

}  // namespace ostrel
