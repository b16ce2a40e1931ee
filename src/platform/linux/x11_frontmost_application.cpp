#include "platform/linux/x11_frontmost_application.h"

#include "platform/linux/application_identifier.h"

namespace ostrel {

std::optional<FrontmostApplication::Application> X11FrontmostApplication::current() const {
    const auto window = windows_.active();
    if (!window) {
        return std::nullopt;
    }
    const auto process = windows_.processOf(*window);
    return Application{applicationIdentifier(processes_, process, windows_.namesOf(*window)),
                       process.value_or(0)};
}

}  // namespace ostrel
