#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariantMap>
#include <cstdint>
#include <map>
#include <optional>
#include <set>

class QDBusMessage;

namespace ostrel {

// The processes of the video players that are playing a film, by MPRIS (org.mpris.MediaPlayer2).
// Whether a player is one for videos, its desktop file tells: its categories, else the types that
// it opens. Whether it plays a film, the name of the file: what has another name, or none, may as
// well be music.
//
// Nothing here waits for an answer.
class MediaPlayers : public QObject {
    Q_OBJECT

  public:
    explicit MediaPlayers(QDBusConnection sessionBus);

    [[nodiscard]] std::set<std::int64_t> processes() const;

    // By the text of a desktop file.
    [[nodiscard]] static bool isForVideos(const QString& desktopFile);

    // By the end of its name, be it a URL or a bare path.
    [[nodiscard]] static bool isFilm(const QString& url);

  private:
    struct Player {
        QString owner;  // the unique name; empty until it is known
        std::optional<std::int64_t> process;
        bool isForVideos = false;
        bool isPlaying = false;
        bool playsFilm = false;
    };

    Q_SLOT void handleChange(const QString& interface, const QVariantMap& changed,
                             const QStringList& invalidated, const QDBusMessage& message);
    void askForAll();
    void add(const QString& name, const QString& owner);
    void askForState(const QString& name);
    void askForDesktopFile(const QString& name);
    static void take(Player& player, const QVariantMap& state);

    QDBusConnection bus_;
    std::map<QString, Player> players_;  // by the name that each has taken
};

}  // namespace ostrel
