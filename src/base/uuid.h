#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace ostrel {

// A universally unique identifier (RFC 9562).
struct Uuid {
    std::array<std::uint8_t, 16> bytes{};

    bool operator==(const Uuid&) const = default;
};

// The 36-character form with hyphens, upper case.
[[nodiscard]] std::string uuidText(const Uuid& uuid);

// Reads that form in either case; absent for anything else.
[[nodiscard]] std::optional<Uuid> parseUuid(std::string_view text);

// Makes a random UUID (version 4). Copies of one maker go on in the same sequence.
using MakeUuid = std::function<Uuid()>;

// Random ones, from the system's source of randomness.
[[nodiscard]] MakeUuid randomUuids();

// The same sequence for the same seed.
[[nodiscard]] MakeUuid seededUuids(std::uint64_t seed);

}  // namespace ostrel
