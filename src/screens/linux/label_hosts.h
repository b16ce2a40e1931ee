#pragma once

#include <QString>

// Which desktops show a text beside a status item's icon. The protocol has no way to ask.
namespace ostrel::LabelHosts {

// `currentDesktop`: as XDG_CURRENT_DESKTOP has it, names separated by colons.
[[nodiscard]] bool isOneOf(const QString& currentDesktop);

}  // namespace ostrel::LabelHosts
