#pragma once

#include <functional>

namespace ostrel {

// Runs `work` on the main thread in one of the next turns of its loop, a menu's or a dialogue's
// included. From any thread: the one way back for what the system calls elsewhere.
void onMain(std::function<void()> work);

// Fatal elsewhere, in builds for development.
void assertOnMain();

}  // namespace ostrel
