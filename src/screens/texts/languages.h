#pragma once

#include <span>
#include <string_view>

#include "screens/texts/texts.h"

namespace ostrel::Texts {

// A language that the texts are there in.
struct Language {
    std::string_view code;  // of ISO 639-1
    std::string_view name;  // in the language itself
    bool isRightToLeft = false;
    std::span<const Entry> (*texts)() = nullptr;
};

// English first, which stands in for what another lacks; then by script and name, as a list of them
// shows them.
[[nodiscard]] std::span<const Language> languages();

// The tables, one file each.
[[nodiscard]] std::span<const Entry> english();
[[nodiscard]] std::span<const Entry> german();
[[nodiscard]] std::span<const Entry> french();
[[nodiscard]] std::span<const Entry> spanish();
[[nodiscard]] std::span<const Entry> italian();
[[nodiscard]] std::span<const Entry> portuguese();
[[nodiscard]] std::span<const Entry> dutch();
[[nodiscard]] std::span<const Entry> polish();
[[nodiscard]] std::span<const Entry> ukrainian();
[[nodiscard]] std::span<const Entry> russian();
[[nodiscard]] std::span<const Entry> turkish();
[[nodiscard]] std::span<const Entry> arabic();
[[nodiscard]] std::span<const Entry> hindi();
[[nodiscard]] std::span<const Entry> japanese();
[[nodiscard]] std::span<const Entry> korean();
[[nodiscard]] std::span<const Entry> chinese();

}  // namespace ostrel::Texts
