#pragma once

#include "screens/status_icon.h"

class QLabel;

namespace ostrel {

// The picture of the status item as it looks in a panel, `side` logical pixels wide and high.
[[nodiscard]] QLabel* makeIconLabel(const StatusIcon::Face& face, int side);

}  // namespace ostrel
