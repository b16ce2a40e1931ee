#pragma once

#include <vector>

#include "platform/api/capability.h"
#include "platform/api/system_notifications.h"

namespace ostrel {

// What this system gives, as far as it differs from one Mac to the next.
struct MacFacts {
    bool isInBundle = true;  // notifications and chimes exist only there
    SystemNotifications::Authorization notifications = SystemNotifications::Authorization::unknown;

    bool operator==(const MacFacts&) const = default;
};

// One entry for each topic, in their order.
[[nodiscard]] std::vector<Capability> capabilitiesOnMac(const MacFacts& facts);

}  // namespace ostrel
