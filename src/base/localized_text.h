#pragma once

#include <string>
#include <vector>

namespace ostrel {

// A text for people as it travels below the screens: a localisation key with the texts of its
// arguments, turned into words only where it is shown.
struct LocalizedText {
    std::string key;
    std::vector<std::string> args;

    bool operator==(const LocalizedText&) const = default;
};

}  // namespace ostrel
