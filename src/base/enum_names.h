#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace ostrel {

// Names of an enumeration whose enumerators count up from 0: declare next to it
//   constexpr std::array<std::string_view, 2> enumNames(Kind) { return {"eye", "body"}; }
template <class E>
concept NamedEnum = requires(E value) {
    enumNames(value).size();
};

template <NamedEnum E>
[[nodiscard]] constexpr std::string_view nameOf(E value) {
    return enumNames(value)[static_cast<std::size_t>(value)];
}

// The enumerator of exactly that name.
template <NamedEnum E>
[[nodiscard]] constexpr std::optional<E> enumFrom(std::string_view name) {
    constexpr auto names = enumNames(E{});
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (names[i] == name) {
            return static_cast<E>(i);
        }
    }
    return std::nullopt;
}

}  // namespace ostrel
