#pragma once

#include <cmath>
#include <concepts>
#include <cstdint>
#include <limits>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

#include "base/clock.h"
#include "base/enum_names.h"
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

// A record lists its fields in order, with their JSON keys:
//   static constexpr auto fields() { return std::tuple{Field{"used", &Stored::used}, ...}; }
template <class Record, class Value>
struct Field {
    std::string_view key;
    Value Record::*member;
};
template <class Record, class Value>
Field(const char*, Value Record::*) -> Field<Record, Value>;

template <class T>
concept JsonRecord = requires {
    T::fields();
};

template <JsonRecord T, class Visit>
void forEachField(Visit&& visit) {
    std::apply([&](const auto&... field) { (visit(field), ...); }, T::fields());
}

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

// As a field of a record: left out when absent; absent or null when read.
template <class T>
struct JsonCodec<std::optional<T>> {};

template <class T>
inline constexpr bool kIsOptional = false;
template <class T>
inline constexpr bool kIsOptional<std::optional<T>> = true;

// Every field must be there and readable, except optional ones, unless the record has a decode() of
// its own; other keys are ignored.
template <JsonRecord T>
struct JsonCodec<T> {
    static Json encode(const T& record) {
        Json object = Json::object();
        forEachField<T>([&]<class Value>(const Field<T, Value>& field) {
            const Value& value = record.*field.member;
            if constexpr (kIsOptional<Value>) {
                if (value) {
                    object[field.key] = JsonCodec<typename Value::value_type>::encode(*value);
                }
            } else {
                object[field.key] = JsonCodec<Value>::encode(value);
            }
        });
        return object;
    }

    static std::optional<T> decode(const Json& json) {
        if constexpr (requires { T::decode(json); }) {
            return T::decode(json);
        } else {
            return decodeStrictly(json);
        }
    }

  private:
    static std::optional<T> decodeStrictly(const Json& json) {
        if (!json.is_object()) {
            return std::nullopt;
        }
        T record{};
        bool readable = true;
        forEachField<T>([&]<class Value>(const Field<T, Value>& field) {
            readable = readable && readField(json, field, record);
        });
        return readable ? std::optional(std::move(record)) : std::nullopt;
    }

    template <class Value>
    static bool readField(const Json& json, const Field<T, Value>& field, T& record) {
        const auto found = json.find(field.key);
        if constexpr (kIsOptional<Value>) {
            if (found == json.end() || found->is_null()) {
                return true;
            }
            record.*field.member = JsonCodec<typename Value::value_type>::decode(*found);
            return (record.*field.member).has_value();
        } else {
            if (found == json.end()) {
                return false;
            }
            auto value = JsonCodec<Value>::decode(*found);
            if (value) {
                record.*field.member = *std::move(value);
            }
            return value.has_value();
        }
    }
};

}  // namespace ostrel
