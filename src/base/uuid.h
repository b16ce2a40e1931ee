#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace ostrel {

// Makes a random UUID (RFC 4122, version 4) in its 36-character form, upper case.
using MakeUuid = std::function<std::string()>;

// Random ones, from the system's source of randomness.
[[nodiscard]] MakeUuid randomUuids();

// The same sequence for the same seed.
[[nodiscard]] MakeUuid seededUuids(std::uint64_t seed);

}  // namespace ostrel
