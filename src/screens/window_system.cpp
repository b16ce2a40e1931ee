#include "screens/window_system.h"

#include <utility>

#ifndef Q_OS_MACOS
#include "screens/x11_window_system.h"
#else
#include <QWidget>
#endif

namespace ostrel {
namespace {

#ifndef Q_OS_MACOS
using OwnWindowSystem = X11WindowSystem;
#else
// The toolkit's way, where nobody has brought the system's.
class OwnWindowSystem : public WindowSystem {
  public:
    void showCover(QWidget& window) override { window.show(); }
    void showCard(QWidget& window) override { window.show(); }
    bool setKeyboardTaken(QWidget& window, bool isTaken) override {
        if (isTaken) {
            window.activateWindow();
        }
        return true;
    }
};
#endif

WindowSystem*& chosen() {
    static WindowSystem* system = nullptr;
    return system;
}

}  // namespace

WindowSystem& WindowSystem::current() {
    static OwnWindowSystem own;
    return chosen() ? *chosen() : own;
}

void WindowSystem::use(WindowSystem* system) {
    chosen() = system;
}

QPixmap WindowSystem::pictureOf(QScreen& /*screen*/, const QRect& /*frame*/) const {
    return {};
}

}  // namespace ostrel
