#pragma once

#include <cstdint>

#include "platform/api/distributed_announcements.h"

namespace ostrel {

// A number as NSNumber has it that is no truth value: `encoding` is the letter for its C type.
// Fractions and what does not fit 64 bits with a sign count as a value of another type.
[[nodiscard]] DistributedAnnouncements::Value announcedNumber(char encoding, std::int64_t whole,
                                                              double real);

}  // namespace ostrel
