#pragma once

#include <QEventLoop>
#include <QObject>
#include <QTimer>
#include <chrono>
#include <functional>

namespace ostrel {

// Runs the event loop for a while.
inline void runFor(std::chrono::milliseconds length) {
    QEventLoop loop;
    QTimer::singleShot(length, &loop, &QEventLoop::quit);
    loop.exec();
}

// Runs the event loop until `condition` holds, which it looks at every few milliseconds; false when
// it does not within `limit`.
inline bool runUntil(const std::function<bool()>& condition,
                     std::chrono::milliseconds limit = std::chrono::seconds(10)) {
    if (condition()) {
        return true;
    }
    bool holds = false;
    QEventLoop loop;
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, &loop, [&] {
        holds = condition();
        if (holds) {
            loop.quit();
        }
    });
    look.start(std::chrono::milliseconds(5));
    QTimer::singleShot(limit, &loop, &QEventLoop::quit);
    loop.exec();
    return holds;
}

}  // namespace ostrel
