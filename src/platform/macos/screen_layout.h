#pragma once

#include <optional>
#include <vector>

#include "platform/api/displays.h"
#include "platform/macos/plain_values.h"

namespace ostrel {

// A screen as AppKit describes it.
struct ScreenDescription {
    PlainValue number;  // "NSScreenNumber"
    Rect frame;         // grows upwards from the lower left corner of the first screen
};

// 32 bits without a sign; absent for anything else.
[[nodiscard]] std::optional<std::uint32_t> displayNumberOf(const PlainValue& number);

// The displays in the order of the screens, of which the first has the menu bar: from its upper
// left corner coordinates grow downwards. Screens without a number or a size are none.
[[nodiscard]] std::vector<Displays::Display> displaysOf(
    const std::vector<ScreenDescription>& screens);

}  // namespace ostrel
