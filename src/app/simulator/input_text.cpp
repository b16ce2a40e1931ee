#include "app/simulator/input_text.h"

#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>

namespace ostrel {

std::optional<std::string> readInput(const std::string& path) {
    std::error_code ignored;
    if (std::filesystem::is_directory(path, ignored)) {
        return std::nullopt;
    }
    std::ifstream file;
    if (path != "-") {
        file.open(path, std::ios::binary);
        if (!file) {
            return std::nullopt;
        }
    }
    std::istream& in = path == "-" ? std::cin : file;
    return std::string(std::istreambuf_iterator<char>(in), {});
}

}  // namespace ostrel
