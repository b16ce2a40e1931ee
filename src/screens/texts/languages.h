#pragma once

#include <span>
#include <string_view>

namespace ostrel::Texts {

// A language that the texts are there in.
struct Language {
    std::string_view code;  // of ISO 639-1
    std::string_view name;  // in the language itself
    bool isRightToLeft = false;
};

// English first, which stands in for what another lacks; then by script and name, as a list of them
// shows them.
[[nodiscard]] std::span<const Language> languages();

}  // namespace ostrel::Texts
