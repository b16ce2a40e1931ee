#pragma once

#include "platform/api/login_item.h"

namespace ostrel {

// The program itself as a login item of macOS 13 and later, which needs its signed bundle; before
// that nothing here ever succeeds.
//
// Where the user has to approve it first, setEnabled() opens the page on which to do so and says
// that it was not done: from the next start on, the system's word counts.
class ServiceLoginItem : public LoginItem {
  public:
    [[nodiscard]] bool isEnabled() const override;
    [[nodiscard]] bool setEnabled(bool isEnabled) override;
};

}  // namespace ostrel
