#include "platform/linux/portal_motion_settings.h"

#include <algorithm>

#include "platform/linux/portal_settings.h"

namespace ostrel {
namespace {

struct Setting {
    QLatin1String group;
    QLatin1String key;
    double less = 0;  // the value that asks for little motion; true counts as 1, false as 0
};

constexpr std::array<Setting, 3> kSettings{{
    {QLatin1String("org.gnome.desktop.interface"), QLatin1String("enable-animations"), 0},
    {QLatin1String("org.freedesktop.appearance"), QLatin1String("reduced-motion"), 1},
    {QLatin1String("org.kde.kdeglobals.KDE"), QLatin1String("AnimationDurationFactor"), 0},
}};

}  // namespace

PortalMotionSettings::PortalMotionSettings(const PortalSettings& portal)
    : forced_(qgetenv("OSTREL_REDUCE_MOTION") == "1"),
      changes_(
          portal.arrived.subscribe([this](const QString& group, const QString& key,
                                          const QVariant& value) { take(group, key, value); })) {}

bool PortalMotionSettings::reduceMotion() const {
    return forced_ ||
           std::find(asksForLess_.begin(), asksForLess_.end(), true) != asksForLess_.end();
}

void PortalMotionSettings::take(const QString& group, const QString& key, const QVariant& value) {
    for (std::size_t i = 0; i < kSettings.size(); ++i) {
        if (kSettings[i].group == group && kSettings[i].key == key) {
            // KDE's arrive as text.
            bool isNumber = false;
            const double number = value.toDouble(&isNumber);
            asksForLess_[i] = isNumber && number == kSettings[i].less;
        }
    }
}

}  // namespace ostrel
