#include "platform/linux/autostart_login_item.h"

#include <unistd.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QString>
#include <algorithm>
#include <cerrno>
#include <sstream>
#include <string_view>
#include <utility>

#include "platform/linux/desktop_entry.h"
#include "platform/linux/durable_files.h"

static void registerDesktopEntry() {
    Q_INIT_RESOURCE(desktop_entry);
}

namespace ostrel {
namespace {

namespace fs = std::filesystem;

std::vector<std::string> parts(const std::string& text, char separator) {
    std::vector<std::string> found;
    std::istringstream stream(text);
    for (std::string part; std::getline(stream, part, separator);) {
        if (!part.empty()) {
            found.push_back(part);
        }
    }
    return found;
}

// As a value of the type string: \s \n \t \r \\ stand for what a line cannot hold.
std::string asValue(std::string_view text) {
    std::string value;
    for (const char character : text) {
        switch (character) {
            case '\n':
                value += "\\n";
                break;
            case '\t':
                value += "\\t";
                break;
            case '\r':
                value += "\\r";
                break;
            case '\\':
                value += "\\\\";
                break;
            default:
                value += character;
        }
    }
    return value;
}

// As the one argument of a command line; % begins a field code there.
std::string asCommand(std::string_view program) {
    std::string quoted = "\"";
    for (const char character : program) {
        if (std::string_view("\"`$\\").find(character) != std::string_view::npos) {
            quoted += '\\';
        } else if (character == '%') {
            quoted += '%';
        }
        quoted += character;
    }
    return quoted + '"';
}

// What the program is for, in every language, as its desktop file has it.
std::string comments() {
    registerDesktopEntry();
    QFile file(QStringLiteral(":/org.ostrel.Ostrel.desktop"));
    std::string lines;
    if (file.open(QIODevice::ReadOnly)) {
        for (const std::string& line : parts(file.readAll().toStdString(), '\n')) {
            lines += line.starts_with("Comment") ? line + '\n' : std::string();
        }
    }
    return lines;
}

std::string entryOf(const std::string& program) {
    return "[Desktop Entry]\n"
           "Type=Application\n"
           "Name=Ostrel\n" +
           comments() +
           "Icon=ostrel\n"
           "Exec=" +
           asValue(asCommand(program)) +
           "\n"
           "TryExec=" +
           asValue(program) +
           "\n"
           "Terminal=false\n"
           "X-GNOME-Autostart-enabled=true\n";
}

// Stands in for the entry that holds for everybody.
constexpr std::string_view kHiddenEntry =
    "[Desktop Entry]\n"
    "Type=Application\n"
    "Name=Ostrel\n"
    "Hidden=true\n";

bool isThere(const std::string& program) {
    if (program.find('/') != std::string::npos) {
        return access(program.c_str(), X_OK) == 0;
    }
    return std::ranges::any_of(parts(qgetenv("PATH").toStdString(), ':'),
                               [&program](const std::string& folder) {
                                   return access((fs::path(folder) / program).c_str(), X_OK) == 0;
                               });
}

fs::path folderFrom(const char* variable, const char* below) {
    const QByteArray configured = qgetenv(variable);
    return configured.startsWith('/') ? fs::path(configured.toStdString())
                                      : fs::path(QDir::homePath().toStdString()) / below;
}

}  // namespace

AutostartLoginItem::Places AutostartLoginItem::Places::ofThisSession() {
    Places places;
    places.userFolder = folderFrom("XDG_CONFIG_HOME", ".config") / "autostart";
    const QByteArray configured = qgetenv("XDG_CONFIG_DIRS");
    for (const std::string& folder :
         parts(configured.isEmpty() ? std::string("/etc/xdg") : configured.toStdString(), ':')) {
        places.systemFolders.push_back(fs::path(folder) / "autostart");
    }
    places.program = QCoreApplication::applicationFilePath().toStdString();
    places.desktops = parts(qgetenv("XDG_CURRENT_DESKTOP").toStdString(), ':');
    return places;
}

AutostartLoginItem::AutostartLoginItem(Places places) : places_(std::move(places)) {}

fs::path AutostartLoginItem::userFile() const {
    return places_.userFolder / kFileName;
}

std::optional<std::string> AutostartLoginItem::systemEntry() const {
    for (const fs::path& folder : places_.systemFolders) {
        if (const auto [error, bytes] = readFile(folder / kFileName); error != ENOENT) {
            return bytes;
        }
    }
    return std::nullopt;
}

bool AutostartLoginItem::isEnabled() const {
    if (const auto [error, bytes] = readFile(userFile()); error != ENOENT && error != ENOTDIR) {
        return startsAtLogin(bytes);
    }
    const auto entry = systemEntry();
    return entry && startsAtLogin(*entry);
}

bool AutostartLoginItem::startsAtLogin(const std::string& entry) const {
    const DesktopEntry values(entry);
    const auto namesThisDesktop = [&](const char* key) {
        return std::ranges::any_of(parts(values.value(key), ';'), [this](const std::string& name) {
            return std::ranges::find(places_.desktops, name) != places_.desktops.end();
        });
    };
    const std::string tried = values.text("TryExec");
    return !values.value("Exec").empty() && values.value("Hidden") != "true" &&
           values.value("X-GNOME-Autostart-enabled") != "false" &&
           (!values.has("OnlyShowIn") || namesThisDesktop("OnlyShowIn")) &&
           !namesThisDesktop("NotShowIn") && (tried.empty() || isThere(tried));
}

bool AutostartLoginItem::setEnabled(bool isEnabled) {
    if (isEnabled) {
        return makeFolder(places_.userFolder) == 0 &&
               replaceFile(userFile(), entryOf(places_.program)) == 0;
    }
    if (!systemEntry()) {
        return removeFile(userFile()) == 0;
    }
    return makeFolder(places_.userFolder) == 0 && replaceFile(userFile(), kHiddenEntry) == 0;
}

}  // namespace ostrel
