#pragma once

#include <cstdint>
#include <optional>
#include <vector>

namespace ostrel {

// The windows that are on the screen, those of the desktop itself left out.
class ScreenWindows {
  public:
    // What cannot be told of a window is absent. Sizes are in the units of the displays' frames.
    struct Window {
        std::optional<std::int64_t> processIdentifier;
        std::optional<double> width;
        std::optional<double> height;

        bool operator==(const Window&) const = default;
    };

    virtual ~ScreenWindows() = default;

    // Absent where there is no list to be had.
    [[nodiscard]] virtual std::optional<std::vector<Window>> onScreen() const = 0;
};

}  // namespace ostrel
