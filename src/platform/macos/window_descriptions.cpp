#include "platform/macos/window_descriptions.h"

namespace ostrel {

ScreenWindows::Window windowOf(const WindowDescription& description) {
    return {int32Of(description.ownerPid), numberOf(valueIn(description.bounds, "Width")),
            numberOf(valueIn(description.bounds, "Height"))};
}

}  // namespace ostrel
