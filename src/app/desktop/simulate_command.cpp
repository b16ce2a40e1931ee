#include "app/desktop/simulate_command.h"

#include <charconv>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

#include "app/desktop/command_output.h"
#include "app/desktop/command_table.h"
#include "app/simulator/input_text.h"
#include "app/simulator/scenario.h"
#include "app/simulator/simulator.h"

namespace ostrel {
namespace {

std::optional<std::uint64_t> parseSeed(const std::string& text) {
    std::uint64_t seed = 0;
    const char* end = text.data() + text.size();
    const auto [rest, failure] = std::from_chars(text.data(), end, seed);
    return failure == std::errc{} && rest == end ? std::optional(seed) : std::nullopt;
}

// Prints many lines at once: a write for each would take longer than the day itself.
class Lines {
  public:
    void add(const std::string& line) {
        waiting_ += line + '\n';
        if (waiting_.size() >= kMostBytes) {
            flush();
        }
    }
    // Returns the exit status.
    [[nodiscard]] int finish() {
        flush();
        return status_;
    }

  private:
    static constexpr std::size_t kMostBytes = 65'536;

    void flush() {
        if (isOutputOpen()) {
            status_ = print(waiting_);
        }
        waiting_.clear();
    }

    std::string waiting_;
    int status_ = ExitStatus::kDone;
};

std::string fileNameOf(const std::string& path) {
    return path == "-" ? "standard input" : std::filesystem::path(path).filename().string();
}

}  // namespace

int runSimulateCommand(const CommandLine& line) {
    MakeUuid makeUuid = randomUuids();
    if (line.has("--seed")) {
        const std::string& given = line.options.at("--seed");
        const auto seed = parseSeed(given);
        if (!seed) {
            return complain({"cli.error.seed %@", {given}}, ExitStatus::kUsage);
        }
        makeUuid = seededUuids(*seed);
    }
    const std::string& path = line.arguments.front();
    const auto text = readInput(path);
    if (!text) {
        return complain({"cli.error.read %@", {path}}, ExitStatus::kUsage);
    }
    const ScenarioResult result = parseScenario(*text);
    if (!result.scenario) {
        return complainOf(fileNameOf(path), result.error, ExitStatus::kUsage);
    }
    Lines lines;
    Simulator simulator(*result.scenario, makeUuid,
                        [&lines](const std::string& event) { lines.add(event); });
    simulator.run();
    return lines.finish();
}

}  // namespace ostrel
