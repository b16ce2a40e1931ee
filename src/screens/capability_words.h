#pragma once

#include <QString>

#include "platform/api/capability.h"

// What people read of a capability.
namespace ostrel::CapabilityWords {

[[nodiscard]] QString topic(const Capability& capability);
[[nodiscard]] QString state(const Capability& capability);

// What is lacking and what would make it work; empty when it works.
[[nodiscard]] QString reason(const Capability& capability);

}  // namespace ostrel::CapabilityWords
