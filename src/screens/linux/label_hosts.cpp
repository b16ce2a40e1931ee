#include "screens/linux/label_hosts.h"

#include <QStringList>
#include <algorithm>
#include <array>

namespace ostrel::LabelHosts {

bool isOneOf(const QString& currentDesktop) {
    // GNOME's indicators come from an extension that shows labels. Desktops that are built upon
    // GNOME name it, too, and have panels of their own.
    constexpr std::array kShowing{QLatin1String("GNOME"), QLatin1String("Unity")};
    constexpr std::array kOwnPanel{QLatin1String("Budgie"), QLatin1String("GNOME-Flashback"),
                                   QLatin1String("Pantheon"), QLatin1String("X-Cinnamon")};
    const QStringList names = currentDesktop.split(QLatin1Char(':'));
    const auto isNamed = [&names](QLatin1String name) { return names.contains(name); };
    return std::any_of(kShowing.begin(), kShowing.end(), isNamed) &&
           std::none_of(kOwnPanel.begin(), kOwnPanel.end(), isNamed);
}

}  // namespace ostrel::LabelHosts
