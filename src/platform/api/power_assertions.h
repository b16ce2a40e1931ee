#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace ostrel {

// Who asked the system not to save power, and in which way.
class PowerAssertions {
  public:
    // Types by process; one without a type is absent. "PreventUserIdleDisplaySleep" keeps the
    // display awake.
    using ByProcess = std::map<std::int64_t, std::vector<std::optional<std::string>>>;

    virtual ~PowerAssertions() = default;

    // Absent where that cannot be told.
    [[nodiscard]] virtual std::optional<ByProcess> byProcess() const = 0;
};

}  // namespace ostrel
