#pragma once

#include "platform/api/haptics.h"

namespace ostrel {

// Linux desktops have no pointing device that taps back.
class NoHaptics : public Haptics {
  public:
    void play(int /*pattern*/) override {}
};

}  // namespace ostrel
