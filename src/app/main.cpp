#include <string>
#include <vector>

#include "app/simulator/simulate_command.h"

int main(int argc, char** argv) {
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    if (!arguments.empty() && arguments.front() == "simulate") {
        return ostrel::runSimulateCommand({arguments.begin() + 1, arguments.end()});
    }
    return 2;
}
