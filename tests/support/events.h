#pragma once

#include <string>
#include <vector>

namespace ostrel {

// What has happened, in order: a test names the whole of it.
using Events = std::vector<std::string>;

}  // namespace ostrel
