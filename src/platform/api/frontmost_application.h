#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace ostrel {

// The application that the user works in.
class FrontmostApplication {
  public:
    struct Application {
        std::optional<std::string> bundleIdentifier;  // or what stands for it on this system
        std::int64_t processIdentifier = 0;
    };

    virtual ~FrontmostApplication() = default;

    // Absent when nothing is in front or it cannot be told.
    [[nodiscard]] virtual std::optional<Application> current() const = 0;
};

}  // namespace ostrel
