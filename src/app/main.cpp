#include <string>
#include <vector>

#include "app/desktop/command_line.h"

int main(int argc, char** argv) {
    const std::vector<std::string> words(argv + 1, argv + argc);
    return ostrel::runCommandLine(argc, argv, words, OSTREL_VERSION);
}
