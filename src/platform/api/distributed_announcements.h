#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <variant>

#include "base/signal.h"

namespace ostrel {

// What programs and the system itself announce to everybody.
class DistributedAnnouncements {
  public:
    // monostate: a value of another type.
    using Value = std::variant<std::monostate, bool, std::int64_t, std::string>;

    struct Announcement {
        std::string name;
        std::map<std::string, Value> userInfo;

        bool operator==(const Announcement&) const = default;
    };

    virtual ~DistributedAnnouncements() = default;

    // On the main thread.
    Signal<const Announcement&> announced;
};

}  // namespace ostrel
