#pragma once

namespace ostrel {

// Whether this program runs from an application bundle: without one there are neither notifications
// nor a login item nor the sounds.
[[nodiscard]] bool isInBundle();

// Whether another process of this user runs the same bundle.
[[nodiscard]] bool isRunningTwice();

}  // namespace ostrel
