#pragma once

#include "platform/api/input_idle.h"

namespace ostrel {

// Since the last event of any kind in this user's session, those that programs make included. Needs
// no permission.
class EventSourceIdle : public InputIdle {
  public:
    [[nodiscard]] std::optional<double> secondsSinceLastInput() const override;
};

}  // namespace ostrel
