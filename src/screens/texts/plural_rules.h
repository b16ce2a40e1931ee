#pragma once

#include <cstdint>
#include <string_view>

namespace ostrel::Texts {

// The plural category that Unicode CLDR gives a whole number in a language: "zero", "one", "two",
// "few", "many" or "other". A language that is not known tells one from all others, as English
// does.
[[nodiscard]] std::string_view pluralCategory(std::string_view language, std::int64_t number);

}  // namespace ostrel::Texts
