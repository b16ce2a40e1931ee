#pragma once

#include "platform/api/login_item.h"

namespace ostrel {

// The program itself as a login item of macOS 13 and later, which needs its signed bundle.
//
// Where the user has to approve it first, setEnabled() opens the page on which to do so and says
// that it was not done: from the next start on, the system's word counts.
class ServiceLoginItem : public LoginItem {
  public:
    // False before macOS 13: then nothing here ever succeeds.
    [[nodiscard]] static bool isOffered();

    [[nodiscard]] bool isEnabled() const override;
    [[nodiscard]] bool setEnabled(bool isEnabled) override;
};

}  // namespace ostrel
