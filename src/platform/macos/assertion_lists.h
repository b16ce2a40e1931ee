#pragma once

#include <cstdint>
#include <vector>

#include "platform/api/power_assertions.h"
#include "platform/macos/plain_values.h"

namespace ostrel {

// What one process asked of the power manager.
struct AssertionList {
    PlainValue processIdentifier;
    std::vector<PlainDictionary> assertions;
};

// The types of the assertions under `typeKey`. A list without a process is left out.
[[nodiscard]] PowerAssertions::ByProcess assertionTypes(const std::vector<AssertionList>& lists,
                                                        const std::string& typeKey);

}  // namespace ostrel
