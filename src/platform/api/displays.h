#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "base/signal.h"

namespace ostrel {

// Screen coordinates grow to the right and downwards. Units are the desktop's logical pixels.
struct Rect {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;

    bool operator==(const Rect&) const = default;
};

// The displays that are connected and lit.
class Displays {
  public:
    struct Display {
        std::uint32_t displayID = 0;  // the same display keeps its number while it is connected
        Rect frame;

        bool operator==(const Display&) const = default;
    };

    virtual ~Displays() = default;

    // In a stable order, possibly empty while displays are reconfigured.
    [[nodiscard]] virtual std::vector<Display> current() const = 0;

    // The one the user works on; absent when that cannot be told.
    [[nodiscard]] virtual std::optional<std::uint32_t> mainDisplayID() const = 0;

    // A display came, went, moved or changed its size.
    Signal<> changed;
};

}  // namespace ostrel
