#pragma once

#include <optional>

#include "base/signal.h"

namespace ostrel {

// Whether the desktop is light or dark.
class AppearanceSettings {
  public:
    virtual ~AppearanceSettings() = default;

    // Absent where the desktop does not say. Cheap: may be asked at every drawing.
    [[nodiscard]] virtual std::optional<bool> prefersDark() const = 0;

    Signal<> changed;
};

}  // namespace ostrel
