#pragma once

#include <optional>

namespace ostrel {

// How long the user has touched neither keyboard nor pointer.
class InputIdle {
  public:
    virtual ~InputIdle() = default;

    // Seconds since the last input of any kind, 0 or more; absent where the system cannot tell.
    [[nodiscard]] virtual std::optional<double> secondsSinceLastInput() const = 0;
};

}  // namespace ostrel
