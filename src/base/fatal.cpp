#include "base/fatal.h"

#include <cstdio>
#include <cstdlib>

namespace ostrel {
namespace {

void (*fatalListener)(std::string_view) = nullptr;

}  // namespace

void fatal(std::string_view message) {
    std::fprintf(stderr, "ostrel: fatal: %.*s\n", static_cast<int>(message.size()), message.data());
    if (fatalListener != nullptr) {
        fatalListener(message);
    }
    std::abort();
}

void onFatal(void (*listener)(std::string_view)) {
    fatalListener = listener;
}

}  // namespace ostrel
