#pragma once

namespace ostrel {

// Short taps felt on the pointing device; a system without any does nothing.
class Haptics {
  public:
    virtual ~Haptics() = default;

    // Pattern 0 is the generic tap.
    virtual void play(int pattern) = 0;
};

}  // namespace ostrel
