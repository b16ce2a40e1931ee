#pragma once

// Objective-C only: Foundation's values as ours.
#import <Foundation/Foundation.h>

#include "platform/macos/plain_values.h"

namespace ostrel {

[[nodiscard]] PlainValue toPlainValue(id _Nullable value);

// Without the entries whose keys are no text. Empty for anything but a dictionary.
[[nodiscard]] PlainDictionary toPlainDictionary(id _Nullable dictionary);

}  // namespace ostrel
