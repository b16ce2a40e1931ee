#include "base/uuid.h"

#include <random>
#include <string_view>

namespace ostrel {
namespace {

template <class Source>
std::string makeUuid(Source& source) {
    static constexpr char kDigits[] = "0123456789ABCDEF";
    static constexpr char kForm[] = "xxxxxxxx-xxxx-4xxx-yxxx-xxxxxxxxxxxx";
    std::string text;
    for (const char place : std::string_view(kForm)) {
        const auto digit = static_cast<unsigned>(source() & 0xFU);
        switch (place) {
            case 'x':
                text += kDigits[digit];
                break;
            case 'y':
                text += kDigits[0x8U | (digit & 0x3U)];
                break;
            default:
                text += place;
        }
    }
    return text;
}

}  // namespace

MakeUuid randomUuids() {
    return [] {
        std::random_device source;
        return makeUuid(source);
    };
}

MakeUuid seededUuids(std::uint64_t seed) {
    return [source = std::mt19937_64(seed)]() mutable { return makeUuid(source); };
}

}  // namespace ostrel
