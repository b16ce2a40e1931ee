#pragma once

#include <QString>
#include <optional>
#include <vector>

#include "base/subscription.h"
#include "platform/macos/status_bar_item.h"
#include "screens/status_icon.h"
#include "screens/status_menu.h"
#include "screens/status_presence.h"

namespace ostrel {

// The program in the menu bar of a Mac: a ring, and the countdown as text beside it.
class MacStatusItem : public StatusPresence {
  public:
    explicit MacStatusItem(const StatusMenu::Services& services);
    MacStatusItem(const MacStatusItem&) = delete;
    MacStatusItem& operator=(const MacStatusItem&) = delete;
    ~MacStatusItem() override;

    void popUpMenu() override;
    void tellNotSaved() override {}  // preferences of this system never fail to be taken

  private:
    void refresh();

    StatusMenu::Services services_;
    StatusMenu menu_;
    StatusBarItem item_;
    std::optional<StatusIcon::Face> face_;  // as it is shown
    QString title_;
    QString toolTip_;
    bool isMenuOpen_ = false;
    std::vector<Subscription> subscriptions_;
};

}  // namespace ostrel
