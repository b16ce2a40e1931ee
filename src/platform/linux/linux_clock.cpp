#include "platform/linux/linux_clock.h"

#include <QByteArray>
#include <QTimeZone>
#include <chrono>

namespace ostrel {

WallTime systemWallTime() {
    const auto sinceReference = std::chrono::system_clock::now().time_since_epoch() -
                                std::chrono::seconds(WallClock::kUnixOffsetSec);
    return WallTime{WallClock::duration(sinceReference)};
}

std::string systemTimeZone() {
    return QTimeZone::systemTimeZoneId().toStdString();
}

}  // namespace ostrel
