#include "platform/macos/screen_layout.h"

#include <cmath>
#include <limits>

namespace ostrel {

std::optional<std::uint32_t> displayNumberOf(const PlainValue& number) {
    const std::optional<double> value = numberOf(number);
    const bool fits = value && *value >= 0 && *value <= std::numeric_limits<std::uint32_t>::max() &&
                      std::trunc(*value) == *value;
    return fits ? std::optional(static_cast<std::uint32_t>(*value)) : std::nullopt;
}

std::vector<Displays::Display> displaysOf(const std::vector<ScreenDescription>& screens) {
    std::vector<Displays::Display> displays;
    for (const ScreenDescription& screen : screens) {
        const std::optional<std::uint32_t> number = displayNumberOf(screen.number);
        if (number && screen.frame.width > 0 && screen.frame.height > 0) {
            const double upperEdge = screen.frame.y + screen.frame.height;
            Rect frame = screen.frame;
            frame.y = screens.front().frame.height - upperEdge;
            displays.push_back({*number, frame});
        }
    }
    return displays;
}

}  // namespace ostrel
