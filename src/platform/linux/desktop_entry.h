#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace ostrel {

// The group [Desktop Entry] of a desktop file, after the Desktop Entry Specification.
class DesktopEntry {
  public:
    explicit DesktopEntry(std::string_view text);

    // The one of an application, by the name of its file without the suffix. Absent when there is
    // none that can be read.
    [[nodiscard]] static std::optional<DesktopEntry> ofApplication(const std::string& identifier);

    [[nodiscard]] bool has(std::string_view key) const;

    // As it is written; empty when there is none.
    [[nodiscard]] std::string value(std::string_view key) const;

    // With what \s \n \t \r \\ stand for.
    [[nodiscard]] std::string text(std::string_view key) const;

    // In the language of a locale such as "de_AT", or of "de", else as everybody gets it.
    [[nodiscard]] std::string localText(const std::string& key, const std::string& locale) const;

  private:
    std::map<std::string, std::string, std::less<>> values_;
};

}  // namespace ostrel
