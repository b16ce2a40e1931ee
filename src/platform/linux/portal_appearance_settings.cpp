#include "platform/linux/portal_appearance_settings.h"

#include "platform/linux/portal_settings.h"

namespace ostrel {
namespace {

constexpr unsigned kDark = 1;
constexpr unsigned kLight = 2;

std::optional<bool> asksForDark(const QVariant& colorScheme) {
    bool isNumber = false;
    const unsigned scheme = colorScheme.toUInt(&isNumber);
    return isNumber && (scheme == kDark || scheme == kLight) ? std::optional(scheme == kDark)
                                                             : std::nullopt;
}

}  // namespace

PortalAppearanceSettings::PortalAppearanceSettings(const PortalSettings& portal)
    : changes_(portal.arrived.subscribe(
          [this](const QString& group, const QString& key, const QVariant& value) {
              if (group == QLatin1String("org.freedesktop.appearance") &&
                  key == QLatin1String("color-scheme") && prefersDark_ != asksForDark(value)) {
                  prefersDark_ = asksForDark(value);
                  changed.send();
              }
          })) {}

}  // namespace ostrel
