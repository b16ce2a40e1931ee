#pragma once

#include "platform/api/haptics.h"

namespace ostrel {

// Taps of the trackpad under the finger. Patterns are the system's: 0 generic, 1 alignment, 2
// change of level; any other is the generic one.
class TrackpadHaptics : public Haptics {
  public:
    void play(int pattern) override;
};

}  // namespace ostrel
