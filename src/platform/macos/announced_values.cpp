#include "platform/macos/announced_values.h"

#include <cmath>

namespace ostrel {
namespace {

using Value = DistributedAnnouncements::Value;

struct ToAnnounced {
    Value operator()(double number) const {
        const bool isWhole = std::trunc(number) == number && number >= -0x1p63 && number < 0x1p63;
        return isWhole ? Value(static_cast<std::int64_t>(number)) : Value();
    }
    template <class Same>
    Value operator()(const Same& value) const {
        return value;
    }
};

}  // namespace

std::map<std::string, Value> announcedValues(const PlainDictionary& userInfo) {
    std::map<std::string, Value> values;
    for (const auto& [key, value] : userInfo) {
        values.emplace(key, std::visit(ToAnnounced(), value));
    }
    return values;
}

}  // namespace ostrel
