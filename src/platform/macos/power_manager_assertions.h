#pragma once

#include "platform/api/power_assertions.h"

namespace ostrel {

// The power manager's table of who keeps what awake, as `pmset -g assertions` shows it.
//
// Asks another process and waits for it: for where an answer is needed now, not for every second.
class PowerManagerAssertions : public PowerAssertions {
  public:
    [[nodiscard]] std::optional<ByProcess> byProcess() const override;
};

}  // namespace ostrel
