#pragma once

#include <cstdint>
#include <functional>
#include <memory>

namespace ostrel {

// Keyboard chords that reach this program whatever has the focus.
class GlobalHotkeys {
  public:
    // Ends with its destruction.
    class Registration {
      public:
        virtual ~Registration() = default;
    };

    virtual ~GlobalHotkeys() = default;

    // `keyCode` is a virtual key code of the one layout table; `modifiers` adds up command 256,
    // shift 512, option 2048 and control 4096. `onPress` runs on the main thread, once for each
    // press. Null when another program holds the chord alone, or the system knows no such thing.
    [[nodiscard]] virtual std::unique_ptr<Registration> add(std::uint32_t keyCode,
                                                            std::uint32_t modifiers,
                                                            std::function<void()> onPress) = 0;
};

}  // namespace ostrel
