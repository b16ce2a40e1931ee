#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace ostrel::Texts {

// The texts of one language, by key, from resources/texts/<code>.json, which is a part of the
// program.
//
// Every language has the keys of the English one. A translation may change the order of the
// placeholders by numbering them: %2$@ takes the second argument. Where a number changes the words,
// a text stands under the key, '#' and the plural category of the Unicode CLDR
// ("toast.merged %lld#one"); the other categories take the text under the key alone.
class TextTable {
  public:
    struct Entry {
        std::string_view key;
        std::string_view text;
    };

    // Empty for a language that is not there.
    explicit TextTable(std::string_view code);
    TextTable(const TextTable&) = delete;
    TextTable& operator=(const TextTable&) = delete;
    TextTable(TextTable&&) noexcept = default;
    TextTable& operator=(TextTable&&) noexcept = default;
    ~TextTable() = default;

    // Good until the table is gone or moved from.
    [[nodiscard]] std::optional<std::string_view> find(std::string_view key) const;

    // By key.
    [[nodiscard]] std::span<const Entry> entries() const { return entries_; }

  private:
    // All of it in one piece, that most of the memory is the words.
    std::vector<char> words_;
    std::vector<Entry> entries_;
};

}  // namespace ostrel::Texts
