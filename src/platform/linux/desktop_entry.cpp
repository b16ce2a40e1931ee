#include "platform/linux/desktop_entry.h"

#include <QStandardPaths>
#include <QString>
#include <sstream>

#include "platform/linux/durable_files.h"

namespace ostrel {
namespace {

std::string trimmed(std::string_view text) {
    const auto first = text.find_first_not_of(" \t\r");
    const auto last = text.find_last_not_of(" \t\r");
    return first == std::string_view::npos ? std::string()
                                           : std::string(text.substr(first, last - first + 1));
}

}  // namespace

DesktopEntry::DesktopEntry(std::string_view text) {
    bool isInGroup = false;
    std::istringstream stream{std::string(text)};
    for (std::string raw; std::getline(stream, raw);) {
        const std::string line = trimmed(raw);
        const auto equals = line.find('=');
        if (line.starts_with('[')) {
            isInGroup = line == "[Desktop Entry]";
        } else if (isInGroup && !line.starts_with('#') && equals != std::string::npos) {
            values_[trimmed(line.substr(0, equals))] = trimmed(line.substr(equals + 1));
        }
    }
}

std::optional<DesktopEntry> DesktopEntry::ofApplication(const std::string& identifier) {
    if (identifier.empty() || identifier.find('/') != std::string::npos) {
        return std::nullopt;
    }
    const QString file =
        QStandardPaths::locate(QStandardPaths::ApplicationsLocation,
                               QString::fromStdString(identifier) + QStringLiteral(".desktop"));
    if (file.isEmpty()) {
        return std::nullopt;
    }
    const auto [error, bytes] = readFile(file.toStdString());
    return error == 0 ? std::optional(DesktopEntry(bytes)) : std::nullopt;
}

bool DesktopEntry::has(std::string_view key) const {
    return values_.find(key) != values_.end();
}

std::string DesktopEntry::value(std::string_view key) const {
    const auto found = values_.find(key);
    return found == values_.end() ? std::string() : found->second;
}

std::string DesktopEntry::text(std::string_view key) const {
    const std::string raw = value(key);
    std::string text;
    for (std::size_t i = 0; i < raw.size(); ++i) {
        if (raw[i] != '\\' || i + 1 == raw.size()) {
            text += raw[i];
            continue;
        }
        const char code = raw[++i];
        text += code == 's'   ? ' '
                : code == 'n' ? '\n'
                : code == 't' ? '\t'
                : code == 'r' ? '\r'
                              : code;
    }
    return text;
}

std::string DesktopEntry::localText(const std::string& key, const std::string& locale) const {
    for (const std::string& language : {locale, locale.substr(0, locale.find('_'))}) {
        const std::string translated = std::string(key).append("[").append(language).append("]");
        if (std::string own = text(translated); !own.empty()) {
            return own;
        }
    }
    return text(key);
}

}  // namespace ostrel
