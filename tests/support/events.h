#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace ostrel {

// What has happened, in order: a test names the whole of it.
using Events = std::vector<std::string>;

// How often something happened, by name: a random test shows by it that nothing was left out.
using Counts = std::map<std::string, std::int64_t>;

}  // namespace ostrel
