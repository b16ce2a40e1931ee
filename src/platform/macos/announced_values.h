#pragma once

#include "platform/api/distributed_announcements.h"
#include "platform/macos/plain_values.h"

namespace ostrel {

// What came with an announcement. A number with a fraction, or beyond 64 bits, counts as a value of
// another type; one without a fraction is an integer, however it was stored.
[[nodiscard]] std::map<std::string, DistributedAnnouncements::Value> announcedValues(
    const PlainDictionary& userInfo);

}  // namespace ostrel
