#include "platform/linux/media_players.h"

#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QDBusVariant>
#include <QFile>
#include <QStandardPaths>
#include <algorithm>
#include <utility>

#include "platform/linux/dbus_questions.h"

namespace ostrel {
namespace {

const QString kPrefix = QStringLiteral("org.mpris.MediaPlayer2.");
const QString kPath = QStringLiteral("/org/mpris/MediaPlayer2");
const QString kRoot = QStringLiteral("org.mpris.MediaPlayer2");
const QString kPlayer = QStringLiteral("org.mpris.MediaPlayer2.Player");
const QString kProperties = QStringLiteral("org.freedesktop.DBus.Properties");
const QString kStatus = QStringLiteral("PlaybackStatus");

bool saysPlaying(const QVariant& status) {
    return status.toString() == QLatin1String("Playing");
}

QDBusMessage questionForProperty(const QString& name, const QString& interface,
                                 const QString& property) {
    QDBusMessage question = questionTo(name, kPath, kProperties, QStringLiteral("Get"));
    question << interface << property;
    return question;
}

QVariant propertyIn(const QDBusMessage& answer) {
    const auto value = onlyArgument(answer, QLatin1String("v"));
    return value ? value->value<QDBusVariant>().variant() : QVariant();
}

QString textOfDesktopFile(const QString& name) {
    const QString path = QStandardPaths::locate(QStandardPaths::ApplicationsLocation,
                                                name + QStringLiteral(".desktop"));
    QFile file(path);
    return !path.isEmpty() && file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll())
                                                             : QString();
}

// What a key of the group [Desktop Entry] lists.
QStringList listIn(const QString& desktopFile, const QString& key) {
    QString group;
    for (const QString& line : desktopFile.split(u'\n')) {
        if (line.startsWith(u'[')) {
            group = line.trimmed();
        } else if (group == QLatin1String("[Desktop Entry]") && line.startsWith(key + u'=')) {
            return line.mid(key.size() + 1).trimmed().split(u';', Qt::SkipEmptyParts);
        }
    }
    return {};
}

}  // namespace

MediaPlayers::MediaPlayers(QDBusConnection sessionBus) : bus_(std::move(sessionBus)) {
    if (!bus_.isConnected()) {
        return;
    }
    qRegisterMetaType<QDBusMessage>();
    bus_.connect(QString(), kPath, kProperties, QStringLiteral("PropertiesChanged"), this,
                 SLOT(handleChange(QString, QVariantMap, QStringList, QDBusMessage)));
    auto* watcher =
        new QDBusServiceWatcher(kRoot + u'*', bus_, QDBusServiceWatcher::WatchForOwnerChange, this);
    connect(watcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString& name, const QString&, const QString& owner) {
                players_.erase(name);
                if (!owner.isEmpty()) {
                    add(name);
                }
            });
    askForAll();
}

void MediaPlayers::askForAll() {
    const QString service = QStringLiteral("org.freedesktop.DBus");
    ask(bus_,
        questionTo(service, QStringLiteral("/org/freedesktop/DBus"), service,
                   QStringLiteral("ListNames")),
        this, [this](const QDBusMessage& answer) {
            const auto names = onlyArgument(answer, QLatin1String("as"));
            for (const QString& name : names ? names->toStringList() : QStringList()) {
                if (name.startsWith(kPrefix)) {
                    add(name);
                }
            }
        });
}

void MediaPlayers::add(const QString& name) {
    if (!players_.try_emplace(name).second) {
        return;
    }
    askForProcess(bus_, name, this, [this, name](std::optional<std::int64_t> process) {
        const auto player = players_.find(name);
        if (player != players_.end()) {
            player->second.process = process;
        }
    });
    askForDesktopFile(name);
    askForStatus(name);
}

void MediaPlayers::askForDesktopFile(const QString& name) {
    ask(bus_, questionForProperty(name, kRoot, QStringLiteral("DesktopEntry")), this,
        [this, name](const QDBusMessage& answer) {
            const auto player = players_.find(name);
            if (player == players_.end()) {
                return;
            }
            QString file = propertyIn(answer).toString();
            if (file.isEmpty()) {
                // Without it the name has to do: "org.mpris.MediaPlayer2.vlc.instance7".
                file = name.mid(kPrefix.size()).section(u'.', 0, 0);
            }
            player->second.isForVideos = isForVideos(textOfDesktopFile(file));
        });
}

void MediaPlayers::askForStatus(const QString& name) {
    ask(bus_, questionForProperty(name, kPlayer, kStatus), this,
        [this, name](const QDBusMessage& answer) {
            const auto player = players_.find(name);
            if (player != players_.end()) {
                player->second.owner = answer.service();
                player->second.isPlaying = saysPlaying(propertyIn(answer));
            }
        });
}

void MediaPlayers::handleChange(const QString& interface, const QVariantMap& changed,
                                const QStringList& invalidated, const QDBusMessage& message) {
    if (interface != kPlayer) {
        return;
    }
    for (auto& [name, player] : players_) {
        if (player.owner != message.service()) {
            continue;
        }
        if (changed.contains(kStatus)) {
            player.isPlaying = saysPlaying(changed[kStatus]);
        } else if (invalidated.contains(kStatus)) {
            askForStatus(name);
        }
    }
}

// Many players of music open a few types of video too; their categories say what they are. A
// browser, which plays both, keeps the display awake by other means when it is a film.
bool MediaPlayers::isForVideos(const QString& desktopFile) {
    const QStringList categories = listIn(desktopFile, QStringLiteral("Categories"));
    if (categories.contains(QLatin1String("Video"))) {
        return true;
    }
    if (categories.contains(QLatin1String("Audio")) ||
        categories.contains(QLatin1String("Music")) ||
        categories.contains(QLatin1String("WebBrowser"))) {
        return false;
    }
    return std::ranges::any_of(
        listIn(desktopFile, QStringLiteral("MimeType")),
        [](const QString& type) { return type.startsWith(QLatin1String("video/")); });
}

std::set<std::int64_t> MediaPlayers::processes() const {
    std::set<std::int64_t> all;
    if (bus_.isConnected()) {
        for (const auto& [name, player] : players_) {
            if (player.process && player.isForVideos && player.isPlaying) {
                all.insert(*player.process);
            }
        }
    }
    return all;
}

}  // namespace ostrel
