#pragma once

#include <QString>
#include <cstdint>
#include <initializer_list>
#include <span>
#include <string_view>
#include <variant>
#include <vector>

#include "base/localized_text.h"

// The words behind the localisation keys.
namespace ostrel::Texts {

// What replaces a placeholder: a whole number for %lld, a text for %@.
using Argument = std::variant<std::int64_t, QString>;

// Which language the texts, numbers and times are in from now on: a code of ISO 639-1 such as "de",
// or "system" for the first of the desktop's that is there. A language that is not there is
// English. "en-XA" and "ar-XB" are for looking at the screens: English 40 % longer, and English
// from right to left.
void setLanguage(std::string_view code);

// The code of the language that was found.
[[nodiscard]] std::string_view language();

[[nodiscard]] bool isRightToLeft();

// The text of `key` with its placeholders filled in. An unknown key stands for itself.
[[nodiscard]] QString of(std::string_view key, std::initializer_list<Argument> arguments = {});

// A text that travelled: its arguments are numbers where its key says %lld.
[[nodiscard]] QString of(const LocalizedText& text);

// Fills the placeholders of one text. An argument that is missing leaves its placeholder in place.
[[nodiscard]] QString fill(const QString& text, std::span<const Argument> arguments);

}  // namespace ostrel::Texts
