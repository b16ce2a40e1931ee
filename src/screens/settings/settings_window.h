#pragma once

#include "screens/controls/styled_window.h"
#include "screens/settings/settings_services.h"

namespace ostrel {

// Everything that one can set, on seven pages. A page is made when it is looked at first.
class SettingsWindow : public StyledWindow {
  public:
    explicit SettingsWindow(SettingsServices services);
    ~SettingsWindow() override;

  protected:
    [[nodiscard]] QWidget* makeContent() override;

  private:
    SettingsServices services_;
    int page_ = 0;
};

}  // namespace ostrel
