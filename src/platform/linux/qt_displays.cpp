#include "platform/linux/qt_displays.h"

#include <QCursor>
#include <QGuiApplication>
#include <QScreen>
#include <algorithm>

#include "platform/linux/x11_active_window.h"

namespace ostrel {
namespace {

// Qt names it after the X display, ":0.0"; monitors have names of their own.
bool isPlaceholder(const QScreen* screen) {
    return screen->name().contains(u':');
}

// On X11 Qt scales the size of a screen, not its position.
QRect deviceGeometry(const QScreen* screen) {
    const QRect logical = screen->geometry();
    return {logical.topLeft(), logical.size() * screen->devicePixelRatio()};
}

int area(const QRect& rect) {
    return rect.isEmpty() ? 0 : rect.width() * rect.height();
}

}  // namespace

QtDisplays::QtDisplays() : connections_(std::make_unique<QObject>()) {
    for (QScreen* screen : QGuiApplication::screens()) {
        add(screen);
    }
    QObject::connect(qGuiApp, &QGuiApplication::screenAdded, connections_.get(),
                     [this](QScreen* screen) {
                         add(screen);
                         changeLater();
                     });
    QObject::connect(
        qGuiApp, &QGuiApplication::screenRemoved, connections_.get(), [this](QScreen* screen) {
            std::erase_if(screens_, [screen](const auto& known) { return known.second == screen; });
            changeLater();
        });
    QObject::connect(qGuiApp, &QGuiApplication::primaryScreenChanged, connections_.get(),
                     [this] { changeLater(); });
}

QtDisplays::~QtDisplays() = default;

void QtDisplays::add(QScreen* screen) {
    screens_.emplace(++lastNumber_, screen);
    QObject::connect(screen, &QScreen::geometryChanged, connections_.get(),
                     [this] { changeLater(); });
}

void QtDisplays::changeLater() {
    if (changePending_) {
        return;
    }
    changePending_ = true;
    QMetaObject::invokeMethod(
        connections_.get(),
        [this] {
            changePending_ = false;
            changed.send();
        },
        Qt::QueuedConnection);
}

bool QtDisplays::isDisplay(const QScreen* screen) const {
    if (screen->geometry().isEmpty()) {
        return false;
    }
    return !isPlaceholder(screen) ||
           std::none_of(screens_.begin(), screens_.end(), [](const auto& known) {
               return !isPlaceholder(known.second) && !known.second->geometry().isEmpty();
           });
}

std::vector<Displays::Display> QtDisplays::current() const {
    std::vector<Display> displays;
    for (const auto& [number, screen] : screens_) {
        if (isDisplay(screen)) {
            const QRectF frame = screen->geometry();
            displays.push_back({number, {frame.x(), frame.y(), frame.width(), frame.height()}});
        }
    }
    return displays;
}

// The screen that shows most of the active window.
QScreen* QtDisplays::activeScreen() const {
    const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    const auto window = x11 == nullptr ? std::nullopt : x11ActiveWindowFrame(x11->connection());
    QScreen* best = nullptr;
    int most = 0;
    for (const auto& [number, screen] : screens_) {
        const int shown = window ? area(deviceGeometry(screen) & *window) : 0;
        if (shown > most) {
            most = shown;
            best = screen;
        }
    }
    return best;
}

std::optional<std::uint32_t> QtDisplays::mainDisplayID() const {
    for (const QScreen* candidate :
         {static_cast<const QScreen*>(activeScreen()),
          static_cast<const QScreen*>(QGuiApplication::screenAt(QCursor::pos())),
          static_cast<const QScreen*>(QGuiApplication::primaryScreen())}) {
        if (const auto number = numberOf(candidate)) {
            return number;
        }
    }
    return std::nullopt;
}

std::optional<std::uint32_t> QtDisplays::numberOf(const QScreen* screen) const {
    for (const auto& [number, known] : screens_) {
        if (known == screen && isDisplay(known)) {
            return number;
        }
    }
    return std::nullopt;
}

QScreen* QtDisplays::screen(std::uint32_t displayID) const {
    const auto known = screens_.find(displayID);
    return known == screens_.end() ? nullptr : known->second;
}

}  // namespace ostrel
