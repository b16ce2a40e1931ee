#pragma once

#include <optional>
#include <string_view>
#include <tuple>
#include <utility>

#include "core/settings/json_codec.h"

namespace ostrel {

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

// As a field of a record: left out when absent; absent or null when read.
template <class T>
struct JsonCodec<std::optional<T>> {};

template <class T>
inline constexpr bool kIsOptional = false;
template <class T>
inline constexpr bool kIsOptional<std::optional<T>> = true;

// Every field must be there and readable, except optional ones, unless the record has a decode() of
// its own; other keys are ignored. A record may have the last word with an isSound() of its own.
template <JsonRecord T>
struct JsonCodec<T> {
    static void write(JsonWriter& out, const T& record) {
        out.beginObject();
        forEachField<T>([&]<class Value>(const Field<T, Value>& field) {
            const Value& value = record.*field.member;
            if constexpr (kIsOptional<Value>) {
                if (value) {
                    out.key(field.key);
                    JsonCodec<typename Value::value_type>::write(out, *value);
                }
            } else {
                out.key(field.key);
                JsonCodec<Value>::write(out, value);
            }
        });
        out.endObject();
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
        if constexpr (requires { record.isSound(); }) {
            readable = readable && record.isSound();
        }
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
            if (!value) {
                return false;
            }
            record.*field.member = *std::move(value);
            return true;
        }
    }
};

}  // namespace ostrel
