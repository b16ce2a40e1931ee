#include "platform/macos/plain_values.h"

#include <cmath>
#include <limits>

namespace ostrel {

PlainValue valueIn(const PlainDictionary& dictionary, const std::string& key) {
    const auto found = dictionary.find(key);
    return found == dictionary.end() ? PlainValue() : found->second;
}

std::optional<double> numberOf(const PlainValue& value) {
    if (const auto* whole = std::get_if<std::int64_t>(&value)) {
        return static_cast<double>(*whole);
    }
    const auto* real = std::get_if<double>(&value);
    return real ? std::optional(*real) : std::nullopt;
}

std::optional<std::int32_t> int32Of(const PlainValue& value) {
    const std::optional<double> number = numberOf(value);
    using Limits = std::numeric_limits<std::int32_t>;
    // Written so that what is no number at all fails as well.
    const bool fits = number && *number >= Limits::min() && *number <= Limits::max() &&
                      std::trunc(*number) == *number;
    return fits ? std::optional(static_cast<std::int32_t>(*number)) : std::nullopt;
}

std::optional<std::string> textOf(const PlainValue& value) {
    const auto* text = std::get_if<std::string>(&value);
    return text ? std::optional(*text) : std::nullopt;
}

}  // namespace ostrel
