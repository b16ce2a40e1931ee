#pragma once

#include <string_view>

namespace ostrel {

// Prints `message` on standard error and aborts: for a broken invariant, never for bad input.
[[noreturn]] void fatal(std::string_view message);

// `listener` hears of the message before the program aborts; null means nobody. It must not throw.
void onFatal(void (*listener)(std::string_view message));

}  // namespace ostrel
