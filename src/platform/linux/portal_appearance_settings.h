#pragma once

#include <optional>

#include "base/subscription.h"
#include "platform/api/appearance_settings.h"

namespace ostrel {

class PortalSettings;

// The desktop's "color-scheme", light or dark. A desktop without a preference says nothing.
class PortalAppearanceSettings : public AppearanceSettings {
  public:
    explicit PortalAppearanceSettings(const PortalSettings& portal);

    [[nodiscard]] std::optional<bool> prefersDark() const override { return prefersDark_; }

  private:
    std::optional<bool> prefersDark_;
    Subscription changes_;
};

}  // namespace ostrel
