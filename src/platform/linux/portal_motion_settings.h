#pragma once

#include <QString>
#include <QVariant>
#include <array>

#include "base/subscription.h"
#include "platform/api/motion_settings.h"

namespace ostrel {

class PortalSettings;

// The desktop's wish for little motion: animations switched off in GNOME's or KDE's settings, or
// the "reduced-motion" appearance.
//
// Where the desktop does not say, animations are on. The environment variable
// OSTREL_REDUCE_MOTION=1 asks for little motion whatever it says.
class PortalMotionSettings : public MotionSettings {
  public:
    explicit PortalMotionSettings(const PortalSettings& portal);

    [[nodiscard]] bool reduceMotion() const override;

  private:
    void take(const QString& group, const QString& key, const QVariant& value);

    bool forced_ = false;
    std::array<bool, 3> asksForLess_{};  // per setting
    Subscription changes_;
};

}  // namespace ostrel
