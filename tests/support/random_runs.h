#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <functional>
#include <string>
#include <vector>

#include "support/events.h"

namespace ostrel {

// How often a test with random input runs: a sample by itself, all in ./test --long.
[[nodiscard]] inline int randomRuns(int sample, int all) {
    return std::getenv("OSTREL_TEST_LONG") != nullptr ? all : sample;
}

// What random runs are and what they are worth.
struct RandomRuns {
    int sample;
    int all;
    int runsPerEvent;                 // each event happens at least once in so many runs
    std::vector<std::string> events;  // what the runs would be worth nothing without
};

// Runs `live` for one seed after the other; it answers what was wrong, empty if nothing was.
inline void runSeeds(const RandomRuns& runs,
                     const std::function<std::string(std::uint64_t seed, Counts&)>& live) {
    Counts counts;
    const char* only = std::getenv("OSTREL_TEST_SEED");
    const int first = only ? std::atoi(only) : 1;
    const int last = only ? first : randomRuns(runs.sample, runs.all);
    for (int seed = first; seed <= last; ++seed) {
        const std::string fault = live(static_cast<std::uint64_t>(seed), counts);
        ASSERT_TRUE(fault.empty())
            << fault << "\nOSTREL_TEST_SEED=" << seed << " runs this one alone";
    }
    for (const std::string& event : runs.events) {
        EXPECT_GE(counts[event], only ? 0 : last / runs.runsPerEvent) << event;
    }
}

}  // namespace ostrel
