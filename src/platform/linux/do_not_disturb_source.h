#pragma once

#include <optional>

#include "base/published.h"

namespace ostrel {

// One desktop's switch for Do Not Disturb.
class DoNotDisturbSource {
  public:
    virtual ~DoNotDisturbSource() = default;

    // Absent until it is known. What cannot be read counts as off.
    [[nodiscard]] const Published<std::optional<bool>>& isOn() const { return isOn_; }

  protected:
    Published<std::optional<bool>> isOn_;
};

}  // namespace ostrel
