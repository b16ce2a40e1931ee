#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

namespace ostrel {

// The X server's counters (SYNC) that tell input from a reset of the screen saver.
struct X11IdleCounters {
    using Counter = std::uint32_t;

    // The core pointer, the core keyboard and what XTEST presses of each: every server makes these
    // four first and keeps them. Input sets back two of them at most, the pointers' or the
    // keyboards'; a reset sets back all.
    static constexpr std::size_t kDevices = 4;

    Counter serverTime = 0;
    Counter input = 0;  // of any device
    std::array<Counter, kDevices> devices{};

    bool operator==(const X11IdleCounters&) const = default;
};

// From what follows the 32 bytes of the head in a reply to ListSystemCounters; whatever that says,
// nothing beyond it is read. Absent when one of them is missing.
[[nodiscard]] std::optional<X11IdleCounters> idleCountersIn(std::span<const std::byte> list);

}  // namespace ostrel
