#pragma once

#include <cmath>
#include <concepts>
#include <cstdint>
#include <limits>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/clock.h"
#include "base/day_key.h"
#include "base/enum_names.h"
#include "base/uuid.h"
#include "core/settings/json.h"

namespace ostrel {

// How a type stands in a JSON document:
//   static Json encode(const T&);
//   static std::optional<T> decode(const Json&);   // absent: not readable as a T
//
// Reading is strict: an integer is an integral number within range (900.0 is one; 900.5, "900" and
// true are none), a bool only true or false, a date a number of seconds since 2001-01-01 UTC.
template <class T>
struct JsonCodec;

template <>
struct JsonCodec<bool> {
    static Json encode(bool value) { return value; }
    static std::optional<bool> decode(const Json& json) {
        return json.is_boolean() ? std::optional(json.get<bool>()) : std::nullopt;
    }
};

template <std::integral T>
struct JsonCodec<T> {
    static Json encode(T value) { return value; }
    static std::optional<T> decode(const Json& json) {
        if (json.is_number_unsigned()) {
            return within(json.get<std::uint64_t>());
        }
        if (json.is_number_integer()) {
            return within(json.get<std::int64_t>());
        }
        if (json.is_number_float()) {
            const double number = json.get<double>();
            if (number == std::trunc(number) && number >= -0x1p63 && number < 0x1p63) {
                return within(static_cast<std::int64_t>(number));
            }
        }
        return std::nullopt;
    }

  private:
    template <class Wide>
    static std::optional<T> within(Wide number) {
        return std::in_range<T>(number) ? std::optional(static_cast<T>(number)) : std::nullopt;
    }
};

template <>
struct JsonCodec<double> {
    static Json encode(double value) { return value; }
    static std::optional<double> decode(const Json& json) {
        return json.is_number() ? std::optional(json.get<double>()) : std::nullopt;
    }
};

template <>
struct JsonCodec<WallTime> {
    static Json encode(WallTime value) { return secondsSinceReference(value); }
    static std::optional<WallTime> decode(const Json& json) {
        const auto seconds = JsonCodec<double>::decode(json);
        return seconds ? std::optional(wallTimeAt(*seconds)) : std::nullopt;
    }
};

template <>
struct JsonCodec<std::string> {
    static Json encode(const std::string& value) { return value; }
    static std::optional<std::string> decode(const Json& json) {
        return json.is_string() ? std::optional(json.get<std::string>()) : std::nullopt;
    }
};

template <>
struct JsonCodec<Uuid> {
    static Json encode(const Uuid& value) { return uuidText(value); }
    static std::optional<Uuid> decode(const Json& json) {
        return json.is_string() ? parseUuid(json.get_ref<const std::string&>()) : std::nullopt;
    }
};

template <>
struct JsonCodec<CalendarDay> {
    static Json encode(CalendarDay value) { return dayKey(value); }
    static std::optional<CalendarDay> decode(const Json& json) {
        return json.is_string() ? parseDayKey(json.get_ref<const std::string&>()) : std::nullopt;
    }
};

template <NamedEnum E>
struct JsonCodec<E> {
    static Json encode(E value) { return std::string(nameOf(value)); }
    static std::optional<E> decode(const Json& json) {
        return json.is_string() ? enumFrom<E>(json.get_ref<const std::string&>()) : std::nullopt;
    }
};

// Lists and sets are arrays; one entry that cannot be read makes the whole unreadable.
template <class T>
requires std::same_as<T, std::vector<typename T::value_type>> ||
    std::same_as<T, std::set<typename T::value_type>>
struct JsonCodec<T> {
    static Json encode(const T& values) {
        Json array = Json::array();
        for (const auto& value : values) {
            array.push_back(JsonCodec<typename T::value_type>::encode(value));
        }
        return array;
    }
    static std::optional<T> decode(const Json& json) {
        if (!json.is_array()) {
            return std::nullopt;
        }
        T values;
        for (const auto& entry : json) {
            auto value = JsonCodec<typename T::value_type>::decode(entry);
            if (!value) {
                return std::nullopt;
            }
            values.insert(values.end(), *std::move(value));
        }
        return values;
    }
};

}  // namespace ostrel
