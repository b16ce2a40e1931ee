#pragma once

#include <QFileSystemWatcher>
#include <QObject>
#include <string>

namespace ostrel {

class SystemEvents;

// Tells of another time zone as a change of the clock, as soon as the system's setting is written.
class ZoneWatch : public QObject {
  public:
    // `events` outlives the watch. `folder` is the one that holds the setting.
    explicit ZoneWatch(SystemEvents& events, const QString& folder = QStringLiteral("/etc"));

  private:
    QFileSystemWatcher watcher_;
    std::string zone_;
};

}  // namespace ostrel
