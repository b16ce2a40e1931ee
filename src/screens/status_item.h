#pragma once

#include <QString>
#include <memory>
#include <optional>
#include <vector>

#include "base/subscription.h"
#include "screens/status_icon.h"
#include "screens/status_menu.h"
#include "screens/tray_watch.h"

class QSystemTrayIcon;

namespace ostrel {

// The icon in the desktop's status area, with its tooltip and its menu.
//
// It appears once the desktop has such an area, if that is later than this; where there never is
// one, the menu can still be brought up. Times above a minute are rounded up to whole minutes, so
// that icon and tooltip are sent over the bus once a minute, not once a second.
class StatusItem {
  public:
    explicit StatusItem(const StatusMenu::Services& services);
    StatusItem(const StatusItem&) = delete;
    StatusItem& operator=(const StatusItem&) = delete;
    ~StatusItem();

    // Shows the menu where the pointer is.
    void popUpMenu();

    // Says beside the icon that settings could not be saved, as soon as there is an icon.
    void tellNotSaved();

    [[nodiscard]] QString toolTip() const { return toolTip_; }
    [[nodiscard]] StatusMenu& menu() { return menu_; }

  private:
    void appear();
    void refresh();
    [[nodiscard]] QString composeToolTip() const;

    StatusMenu::Services services_;
    StatusMenu menu_;
    std::unique_ptr<QSystemTrayIcon> icon_;
    std::optional<StatusIcon::Face> face_;
    QString toolTip_;
    bool isUnsavedTold_ = true;
    TrayWatch trayWatch_;
    std::vector<Subscription> subscriptions_;
};

}  // namespace ostrel
