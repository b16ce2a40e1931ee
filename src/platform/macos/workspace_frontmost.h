#pragma once

#include "platform/api/frontmost_application.h"

namespace ostrel {

// The application that owns the menu bar, as NSWorkspace has it. What runs outside of a bundle has
// no identifier.
class WorkspaceFrontmost : public FrontmostApplication {
  public:
    [[nodiscard]] std::optional<Application> current() const override;
};

}  // namespace ostrel
