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
#include "core/settings/json_writer.h"

namespace ostrel {

// How a type stands in a JSON document:
//   static void write(JsonWriter&, const T&);
//   static std::optional<T> decode(const Json&);   // absent: not readable as a T
//
// Reading is strict: an integer is an integral number within range (900.0 is one; 900.5, "900" and
// true are none), a bool only true or false, a date a number of seconds since 2001-01-01 UTC.
template <class T>
struct JsonCodec;

template <>
struct JsonCodec<bool> {
    static void write(JsonWriter& out, bool value) { out.boolean(value); }
    static std::optional<bool> decode(const Json& json) {
        return json.is_boolean() ? std::optional(json.get<bool>()) : std::nullopt;
    }
};

template <std::integral T>
struct JsonCodec<T> {
    static void write(JsonWriter& out, T value) {
        if constexpr (std::unsigned_integral<T>) {
            out.unsignedInteger(value);
        } else {
            out.integer(value);
        }
    }
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
    static void write(JsonWriter& out, double value) { out.number(value); }
    static std::optional<double> decode(const Json& json) {
        return json.is_number() ? std::optional(json.get<double>()) : std::nullopt;
    }
};

template <>
struct JsonCodec<WallTime> {
    static void write(JsonWriter& out, WallTime value) { out.number(secondsSinceReference(value)); }
    static std::optional<WallTime> decode(const Json& json) {
        const auto seconds = JsonCodec<double>::decode(json);
        return seconds ? std::optional(wallTimeAt(*seconds)) : std::nullopt;
    }
};

template <>
struct JsonCodec<std::string> {
    static void write(JsonWriter& out, const std::string& value) { out.text(value); }
    static std::optional<std::string> decode(const Json& json) {
        return json.is_string() ? std::optional(json.get<std::string>()) : std::nullopt;
    }
};

template <>
struct JsonCodec<Uuid> {
    static void write(JsonWriter& out, const Uuid& value) { out.plainText(uuidText(value)); }
    static std::optional<Uuid> decode(const Json& json) {
        return json.is_string() ? parseUuid(json.get_ref<const std::string&>()) : std::nullopt;
    }
};

template <>
struct JsonCodec<CalendarDay> {
    static void write(JsonWriter& out, CalendarDay value) { out.plainText(dayKey(value)); }
    static std::optional<CalendarDay> decode(const Json& json) {
        return json.is_string() ? parseDayKey(json.get_ref<const std::string&>()) : std::nullopt;
    }
};

template <NamedEnum E>
struct JsonCodec<E> {
    static void write(JsonWriter& out, E value) { out.plainText(nameOf(value)); }
    static std::optional<E> decode(const Json& json) {
        return json.is_string() ? enumFrom<E>(json.get_ref<const std::string&>()) : std::nullopt;
    }
};

// Lists and sets are arrays; one entry that cannot be read makes the whole unreadable.
template <class T>
requires std::same_as<T, std::vector<typename T::value_type>> ||
    std::same_as<T, std::set<typename T::value_type>>
struct JsonCodec<T> {
    static void write(JsonWriter& out, const T& values) {
        out.beginArray();
        for (const auto& value : values) {
            JsonCodec<typename T::value_type>::write(out, value);
        }
        out.endArray();
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

// Refuses what JSON cannot hold: numbers that are not finite and text that is not UTF-8.
template <class T>
[[nodiscard]] JsonText printJson(const T& value) {
    JsonWriter out;
    JsonCodec<T>::write(out, value);
    return out.take();
}

// As it stands in a document; null when it cannot.
template <class T>
[[nodiscard]] Json asJson(const T& value) {
    return parseJson(printJson(value).text.value_or("null")).value_or(Json());
}

}  // namespace ostrel
