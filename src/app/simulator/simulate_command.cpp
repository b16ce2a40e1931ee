#include "app/simulator/simulate_command.h"

#include <charconv>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <optional>

#include "app/simulator/input_text.h"
#include "app/simulator/scenario.h"
#include "app/simulator/simulator.h"

namespace ostrel {
namespace {

constexpr int kUnusable = 2;

int refuse(const std::string& problem) {
    std::cerr << problem << '\n';
    return kUnusable;
}

std::optional<std::uint64_t> parseSeed(const std::string& text) {
    std::uint64_t seed = 0;
    const char* end = text.data() + text.size();
    const auto [rest, failure] = std::from_chars(text.data(), end, seed);
    return failure == std::errc{} && rest == end ? std::optional(seed) : std::nullopt;
}

struct Options {
    std::optional<std::uint64_t> seed;
    std::string path;
};

std::optional<Options> parseOptions(const std::vector<std::string>& arguments) {
    Options options;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        if (arguments[i] == "--seed" && i + 1 < arguments.size()) {
            options.seed = parseSeed(arguments[++i]);
            if (!options.seed) {
                return std::nullopt;
            }
        } else if (options.path.empty() &&
                   (arguments[i] == "-" || !arguments[i].starts_with('-'))) {
            options.path = arguments[i];
        } else {
            return std::nullopt;
        }
    }
    return options.path.empty() ? std::nullopt : std::optional(options);
}

}  // namespace

int runSimulateCommand(const std::vector<std::string>& arguments) {
    const auto options = parseOptions(arguments);
    if (!options) {
        return refuse("usage: ostrel simulate [--seed N] SCENARIO.json|-");
    }
    const auto text = readInput(options->path);
    if (!text) {
        return refuse(options->path + ": cannot be read");
    }
    const std::string name = options->path == "-"
                                 ? "standard input"
                                 : std::filesystem::path(options->path).filename().string();
    const ScenarioResult result = parseScenario(*text);
    if (!result.scenario) {
        return refuse(name + ": " + result.error);
    }
    Simulator simulator(*result.scenario,
                        options->seed ? seededUuids(*options->seed) : randomUuids(),
                        [](const std::string& line) {
                            std::fwrite(line.data(), 1, line.size(), stdout);
                            std::fputc('\n', stdout);
                        });
    simulator.run();
    return std::fflush(stdout) == 0 ? 0 : 1;
}

}  // namespace ostrel
