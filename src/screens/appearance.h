#pragma once

#include <QPalette>
#include <vector>

#include "base/signal.h"
#include "base/subscription.h"

namespace ostrel {

class AppearanceSettings;
class SettingsStore;

// Light or dark, as the user chose for Ostrel, else as the desktop says, else as the toolkit's own
// palette is. The palette of all our windows follows.
class Appearance {
  public:
    // Both outlive it; so does the QApplication.
    Appearance(const SettingsStore& settingsStore, const AppearanceSettings& desktop);

    [[nodiscard]] bool isDark() const { return isDark_; }

    Signal<> changed;

  private:
    void adopt();
    [[nodiscard]] bool wantsDark() const;

    const SettingsStore& settingsStore_;
    const AppearanceSettings& desktop_;
    const QPalette toolkits_;
    bool isDark_ = false;
    std::vector<Subscription> subscriptions_;
};

}  // namespace ostrel
