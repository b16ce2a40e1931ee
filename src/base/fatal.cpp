#include "base/fatal.h"

#include <cstdio>
#include <cstdlib>

namespace ostrel {

void fatal(std::string_view message) {
    std::fprintf(stderr, "ostrel: fatal: %.*s\n", static_cast<int>(message.size()), message.data());
    std::abort();
}

}  // namespace ostrel
