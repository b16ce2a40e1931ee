#pragma once

#include <QEventLoop>
#include <QGuiApplication>
#include <QTimer>
#include <chrono>
#include <functional>

namespace ostrel {

// Runs the event loop until `condition` holds, which it looks at after every event and every few
// milliseconds; false when it does not within `limit`.
inline bool runUntil(const std::function<bool()>& condition,
                     std::chrono::milliseconds limit = std::chrono::seconds(10)) {
    const auto end = std::chrono::steady_clock::now() + limit;
    QTimer look;
    look.start(5);
    while (!condition()) {
        if (std::chrono::steady_clock::now() >= end) {
            return false;
        }
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    return true;
}

// Runs the event loop for a while.
inline void runFor(std::chrono::milliseconds length) {
    static_cast<void>(runUntil([] { return false; }, length));
}

}  // namespace ostrel
