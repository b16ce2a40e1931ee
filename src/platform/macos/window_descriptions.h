#pragma once

#include <string>

#include "platform/api/screen_windows.h"
#include "platform/macos/plain_values.h"

namespace ostrel {

// What the window server says of one window.
struct WindowDescription {
    PlainValue ownerPid;
    PlainDictionary bounds;  // "X", "Y", "Width", "Height", in points
};

// What is missing there or of another type is absent.
[[nodiscard]] ScreenWindows::Window windowOf(const WindowDescription& description);

}  // namespace ostrel
