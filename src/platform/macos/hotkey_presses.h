#pragma once

#include <cstdint>
#include <functional>
#include <map>

namespace ostrel {

// Which press means what: numbers that the system hands back with a press, and what to call then.
class HotkeyPresses {
  public:
    // Of the numbers: 'Ostr'.
    static constexpr std::uint32_t kSignature = 0x4F737472;

    // A number that was never given before, and is not 0.
    [[nodiscard]] std::uint32_t add(std::function<void()> onPress);

    void remove(std::uint32_t number) { presses_.erase(number); }

    // False for another program's signature and for a number that nobody has. What is called may remove itself, and others.
    bool press(std::uint32_t signature, std::uint32_t number) const;

    // Whether the system knows such a chord: a key of the layout table with modifiers of ours.
    [[nodiscard]] static bool isChord(std::uint32_t keyCode, std::uint32_t modifiers);

  private:
    std::map<std::uint32_t, std::function<void()>> presses_;
    std::uint32_t lastNumber_ = 0;
};

}  // namespace ostrel
