#pragma once

#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>

namespace ostrel {

// Objects keep the order of their keys, so that documents read in the order of their fields.
using Json = nlohmann::ordered_json;

// Absent when the bytes are no JSON document (RFC 8259) in valid UTF-8. A number that is too large
// to be held reads as null: one such number must not cost the whole document.
[[nodiscard]] std::optional<Json> parseJson(std::string_view bytes);

}  // namespace ostrel
