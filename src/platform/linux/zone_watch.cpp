#include "platform/linux/zone_watch.h"

#include "platform/api/system_events.h"
#include "platform/linux/linux_clock.h"

namespace ostrel {

// The setting is a link that is replaced as a whole, which only its folder tells.
ZoneWatch::ZoneWatch(SystemEvents& events, const QString& folder)
    : watcher_(QStringList{folder}), zone_(systemTimeZone()) {
    connect(&watcher_, &QFileSystemWatcher::directoryChanged, this, [this, &events] {
        std::string zone = systemTimeZone();
        if (zone != zone_) {
            zone_ = std::move(zone);
            events.clockChanged.send();
        }
    });
}

}  // namespace ostrel
