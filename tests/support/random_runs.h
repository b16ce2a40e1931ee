#pragma once

#include <cstdlib>

namespace ostrel {

// How often a test with random input runs: a sample by itself, all in ./test --long.
[[nodiscard]] inline int randomRuns(int sample, int all) {
    return std::getenv("OSTREL_TEST_LONG") != nullptr ? all : sample;
}

}  // namespace ostrel
