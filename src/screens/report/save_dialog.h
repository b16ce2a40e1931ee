#pragma once

#include <QString>

#include "screens/report/report_services.h"

namespace ostrel {

// Asks with the desktop's own dialog, in the user's documents at first.
[[nodiscard]] QString askWithSaveDialog(QWidget& window, const SaveQuestion& question);

}  // namespace ostrel
