#pragma once

namespace ostrel {

// Asks for the user's attention through a window of ours: its entry in the task list stands out
// until the user turns to it (on X11 the EWMH state _NET_WM_STATE_DEMANDS_ATTENTION). Does nothing
// while no window of ours is in the task list, or one of them has the focus.
void requestUserAttention();

}  // namespace ostrel
