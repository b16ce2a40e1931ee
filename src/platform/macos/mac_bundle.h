#pragma once

namespace ostrel {

// Whether this program runs from an application bundle: without one there are neither notifications
// nor a login item nor the sounds.
[[nodiscard]] bool isInBundle();

}  // namespace ostrel
