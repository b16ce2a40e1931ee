#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <variant>

namespace ostrel {

// A value out of the system's dictionaries. monostate: one of another type.
using PlainValue = std::variant<std::monostate, bool, std::int64_t, double, std::string>;
using PlainDictionary = std::map<std::string, PlainValue>;

// What stands under `key`, monostate where nothing does.
[[nodiscard]] PlainValue valueIn(const PlainDictionary& dictionary, const std::string& key);

// A number of either kind; a truth value is none.
[[nodiscard]] std::optional<double> numberOf(const PlainValue& value);

// A number without a fraction that 32 bits hold.
[[nodiscard]] std::optional<std::int32_t> int32Of(const PlainValue& value);

[[nodiscard]] std::optional<std::string> textOf(const PlainValue& value);

}  // namespace ostrel
