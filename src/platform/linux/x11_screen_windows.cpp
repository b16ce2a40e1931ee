#include "platform/linux/x11_screen_windows.h"

#include <QGuiApplication>
#include <QScreen>

namespace ostrel {
namespace {

// On X11 Qt scales the size of a screen, not its position.
QRect deviceGeometry(const QScreen& screen) {
    const QRect logical = screen.geometry();
    return {logical.topLeft(), logical.size() * screen.devicePixelRatio()};
}

double scaleAt(const QRect& frame) {
    double scale = qGuiApp->devicePixelRatio();
    std::int64_t most = 0;
    for (const QScreen* screen : QGuiApplication::screens()) {
        const QRect shown = deviceGeometry(*screen) & frame;
        const std::int64_t area = std::int64_t{shown.width()} * shown.height();
        if (!shown.isEmpty() && area > most) {
            most = area;
            scale = screen->devicePixelRatio();
        }
    }
    return scale;
}

}  // namespace

std::optional<std::vector<ScreenWindows::Window>> X11ScreenWindows::onScreen() const {
    const auto clients = windows_.onScreen();
    if (!clients) {
        return std::nullopt;
    }
    std::vector<Window> windows;
    windows.reserve(clients->size());
    for (const X11Windows::Client& client : *clients) {
        Window window{client.process, {}, {}};
        if (client.frame) {
            const double scale = scaleAt(*client.frame);
            window.width = client.frame->width() / scale;
            window.height = client.frame->height() / scale;
        }
        windows.push_back(window);
    }
    return windows;
}

}  // namespace ostrel
