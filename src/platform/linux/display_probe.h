#pragma once

namespace ostrel {

// Whether there is a Wayland compositor or an X server here to draw on. The toolkit, asked for a
// window without one, ends the process. True where the user has told the toolkit what to draw on.
[[nodiscard]] bool isDisplayReachable();

}  // namespace ostrel
