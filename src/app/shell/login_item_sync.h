#pragma once

#include "base/localized_text.h"
#include "base/signal.h"
#include "base/subscription.h"

namespace ostrel {

class LoginItem;
class SettingsStore;

// Keeps the setting `launchAtLogin` and the system's login item the same. At the start the system
// is right, since its own tools may have changed it; from then on the setting acts at once.
//
// Where the system does not take the change, the setting goes back before update() of the store
// returns, and `refused` is sent.
class LoginItemSync {
  public:
    // Both outlive it.
    LoginItemSync(SettingsStore& settingsStore, LoginItem& loginItem);

    Signal<const LocalizedText&> refused;  // with what the user should read

  private:
    void follow(bool isWanted);

    SettingsStore& settingsStore_;
    LoginItem& loginItem_;
    bool isEnabled_;
    Subscription settingsChanges_;
};

}  // namespace ostrel
