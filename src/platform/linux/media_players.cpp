#include "platform/linux/media_players.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QDBusVariant>
#include <QFile>
#include <QStandardPaths>
#include <QUrl>
#include <algorithm>
#include <array>
#include <utility>

#include "platform/linux/dbus_questions.h"

namespace ostrel {
namespace {

const QString kPrefix = QStringLiteral("org.mpris.MediaPlayer2.");
const QString kPath = QStringLiteral("/org/mpris/MediaPlayer2");
const QString kRoot = QStringLiteral("org.mpris.MediaPlayer2");
const QString kPlayer = QStringLiteral("org.mpris.MediaPlayer2.Player");
const QString kStatus = QStringLiteral("PlaybackStatus");
const QString kMetadata = QStringLiteral("Metadata");

QString textOfDesktopFile(const QString& name) {
    const QString path = QStandardPaths::locate(QStandardPaths::ApplicationsLocation,
                                                name + QStringLiteral(".desktop"));
    QFile file(path);
    return !path.isEmpty() && file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll())
                                                             : QString();
}

// What players tell is of the types that they please.
QVariantMap mapIn(const QVariant& value) {
    const auto argument = value.value<QDBusArgument>();
    return argument.currentSignature() == QLatin1String("a{sv}") ? qdbus_cast<QVariantMap>(argument)
                                                                 : QVariantMap();
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
    bus_.connect(QString(), kPath, kPropertiesInterface, QStringLiteral("PropertiesChanged"), this,
                 SLOT(handleChange(QString, QVariantMap, QStringList, QDBusMessage)));
    auto* watcher =
        new QDBusServiceWatcher(kRoot + u'*', bus_, QDBusServiceWatcher::WatchForOwnerChange, this);
    connect(watcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString& name, const QString&, const QString& owner) {
                players_.erase(name);
                if (!owner.isEmpty()) {
                    add(name, owner);
                }
            });
    askForAll();
}

void MediaPlayers::askForAll() {
    ask(bus_, questionToBus(QStringLiteral("ListNames")), this, [this](const QDBusMessage& answer) {
        const auto names = onlyArgument(answer, QLatin1String("as"));
        for (const QString& name : names ? names->toStringList() : QStringList()) {
            if (name.startsWith(kPrefix)) {
                add(name, QString());
            }
        }
    });
}

void MediaPlayers::add(const QString& name, const QString& owner) {
    const auto [place, isNew] = players_.try_emplace(name);
    if (!isNew) {
        return;
    }
    place->second.owner = owner;
    askForProcess(bus_, name, this, [this, name](std::optional<std::int64_t> process) {
        const auto player = players_.find(name);
        if (player != players_.end()) {
            player->second.process = process;
        }
    });
    askForDesktopFile(name);
    askForState(name);
}

void MediaPlayers::askForDesktopFile(const QString& name) {
    QDBusMessage question = questionTo(name, kPath, kPropertiesInterface, QStringLiteral("Get"));
    question << kRoot << QStringLiteral("DesktopEntry");
    ask(bus_, question, this, [this, name](const QDBusMessage& answer) {
        const auto player = players_.find(name);
        if (player == players_.end()) {
            return;
        }
        const auto value = onlyArgument(answer, QLatin1String("v"));
        QString file = value ? value->value<QDBusVariant>().variant().toString() : QString();
        if (file.isEmpty()) {
            // Without it the name has to do: "org.mpris.MediaPlayer2.vlc.instance7".
            file = name.mid(kPrefix.size()).section(u'.', 0, 0);
        }
        player->second.isForVideos = isForVideos(textOfDesktopFile(file));
    });
}

void MediaPlayers::askForState(const QString& name) {
    QDBusMessage question = questionTo(name, kPath, kPropertiesInterface, QStringLiteral("GetAll"));
    question << kPlayer;
    ask(bus_, question, this, [this, name](const QDBusMessage& answer) {
        const auto player = players_.find(name);
        if (player == players_.end()) {
            return;
        }
        // A refusal comes from the player too, but silence from nobody.
        if (player->second.owner.isEmpty() && answer.service().startsWith(u':')) {
            player->second.owner = answer.service();
        }
        if (const auto state = onlyArgument(answer, QLatin1String("a{sv}"))) {
            take(player->second, qdbus_cast<QVariantMap>(*state));
        } else {
            player->second.isPlaying = false;
        }
    });
}

void MediaPlayers::take(Player& player, const QVariantMap& state) {
    if (state.contains(kStatus)) {
        player.isPlaying = state[kStatus].toString() == QLatin1String("Playing");
    }
    if (state.contains(kMetadata)) {
        const QVariantMap metadata = mapIn(state[kMetadata]);
        player.playsFilm = isFilm(metadata.value(QStringLiteral("xesam:url")).toString());
    }
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
        take(player, changed);
        if (invalidated.contains(kStatus) || invalidated.contains(kMetadata)) {
            askForState(name);
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

bool MediaPlayers::isFilm(const QString& url) {
    static constexpr std::array kSuffixes{
        QLatin1String(".3gp"),  QLatin1String(".asf"),  QLatin1String(".avi"),
        QLatin1String(".divx"), QLatin1String(".f4v"),  QLatin1String(".flv"),
        QLatin1String(".iso"),  QLatin1String(".m2ts"), QLatin1String(".m4v"),
        QLatin1String(".mkv"),  QLatin1String(".mov"),  QLatin1String(".mp4"),
        QLatin1String(".mpeg"), QLatin1String(".mpg"),  QLatin1String(".mts"),
        QLatin1String(".ogm"),  QLatin1String(".ogv"),  QLatin1String(".rm"),
        QLatin1String(".rmvb"), QLatin1String(".ts"),   QLatin1String(".vob"),
        QLatin1String(".webm"), QLatin1String(".wmv"),
    };
    // In a bare path '#' and '?' are letters like others.
    const bool hasScheme = url.contains(QLatin1String("://")) ||
                           url.startsWith(QLatin1String("file:"), Qt::CaseInsensitive);
    const QString path = hasScheme ? QUrl(url).path() : url;
    return std::ranges::any_of(kSuffixes, [&path](QLatin1String suffix) {
        return path.endsWith(suffix, Qt::CaseInsensitive);
    });
}

std::set<std::int64_t> MediaPlayers::processes() const {
    std::set<std::int64_t> all;
    if (bus_.isConnected()) {
        for (const auto& [name, player] : players_) {
            if (player.process && player.isForVideos && player.isPlaying && player.playsFilm) {
                all.insert(*player.process);
            }
        }
    }
    return all;
}

}  // namespace ostrel
