#include <string>
#include <vector>

#include "app/desktop/command_line.h"
#include "app/simulator/simulate_command.h"

int main(int argc, char** argv) {
    const std::vector<std::string> words(argv + 1, argv + argc);
    if (!words.empty() && words.front() == "simulate" && words.back() != "--help") {
        return ostrel::runSimulateCommand({words.begin() + 1, words.end()});
    }
    return ostrel::runCommandLine(argc, argv, words, OSTREL_VERSION);
}
