#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "core/settings/json_record.h"

namespace ostrel {

// Reads JSON values and remembers the first thing that is wrong, with its place. Reading goes on
// with empty values then, so that readers need no way out of their own.
class ScenarioReader {
  public:
    // Leaves its place when it dies.
    class [[nodiscard]] Place {
      public:
        Place(ScenarioReader& reader, std::size_t length) : reader_(reader), length_(length) {}
        Place(const Place&) = delete;
        Place& operator=(const Place&) = delete;
        ~Place() { reader_.place_.resize(length_); }

      private:
        ScenarioReader& reader_;
        std::size_t length_;
    };

    Place enter(std::string_view key) {
        const std::size_t length = place_.size();
        place_ += place_.empty() ? std::string(key) : "." + std::string(key);
        return {*this, length};
    }
    Place enterItem(std::size_t index) {
        const std::size_t length = place_.size();
        place_ += "[" + std::to_string(index) + "]";
        return {*this, length};
    }

    [[nodiscard]] bool ok() const { return error_.empty(); }
    [[nodiscard]] const std::string& error() const { return error_; }

    void fail(std::string_view problem) {
        if (ok()) {
            error_ = (place_.empty() ? "" : place_ + ": ") + std::string(problem);
        }
    }

    template <class T>
    T read(const Json& json, std::string_view expected) {
        auto value = JsonCodec<T>::decode(json);
        if (!value) {
            fail("must be " + std::string(expected));
        }
        return value.value_or(T{});
    }

    template <class Visit>
    void eachKey(const Json& json, std::string_view what, Visit&& visit) {
        if (!json.is_object()) {
            fail(std::string(what).append(" must be an object"));
            return;
        }
        for (const auto& [key, value] : json.items()) {
            if (ok()) {
                visit(key, value);
            }
        }
    }

  private:
    std::string place_;
    std::string error_;
};

}  // namespace ostrel
