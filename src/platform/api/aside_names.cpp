#include "platform/api/aside_names.h"

namespace ostrel {
namespace {

constexpr std::string_view kAside = ".damaged";

}  // namespace

std::string asideSuffix(int count) {
    if (count == 0) {
        return std::string(kAside);
    }
    std::string letters;
    for (int rest = count + 1; rest > 0; rest = (rest - 1) / 26) {
        letters.insert(letters.begin(), static_cast<char>('a' + (rest - 1) % 26));
    }
    return std::string(kAside) + "-" + letters;
}

std::string freeAsideName(std::string_view key,
                          const std::function<bool(const std::string&)>& isTaken) {
    std::string name;
    for (int count = 0; count < kMostSetAside; ++count) {
        name = std::string(key) + asideSuffix(count);
        if (!isTaken(name)) {
            break;
        }
    }
    return name;
}

bool isAsideName(std::string_view key) {
    const auto dot = key.rfind('.');
    const std::string_view last = dot == std::string_view::npos ? "" : key.substr(dot);
    return last == kAside || last.starts_with(std::string(kAside) + "-");
}

}  // namespace ostrel
