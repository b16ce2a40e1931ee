#include "platform/linux/user_attention.h"

#include <xcb/xcb.h>

#include <QGuiApplication>
#include <QWindow>

namespace ostrel {
namespace {

// Qt leaves the request in its buffer until the next event from the X server, which may be a while.
void sendAtOnce() {
    if (const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>()) {
        xcb_flush(x11->connection());
    }
}

bool isInTaskList(const QWindow& window) {
    return window.isVisible() && (window.type() == Qt::Window || window.type() == Qt::Dialog) &&
           !window.flags().testFlag(Qt::BypassWindowManagerHint);
}

}  // namespace

void requestUserAttention() {
    constexpr int kUntilActive = 0;
    if (QGuiApplication::focusWindow() != nullptr) {
        return;
    }
    for (QWindow* window : QGuiApplication::topLevelWindows()) {
        if (isInTaskList(*window)) {
            window->alert(kUntilActive);
            sendAtOnce();
            return;
        }
    }
}

}  // namespace ostrel
