#pragma once

#include <cstdint>
#include <map>
#include <string>

namespace ostrel {

// How often something happened, by name: a random test shows by it that nothing was left out.
using Counts = std::map<std::string, std::int64_t>;

}  // namespace ostrel
