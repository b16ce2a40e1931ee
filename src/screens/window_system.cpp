#include "screens/window_system.h"

#include <QWidget>

namespace ostrel {
namespace {

// The toolkit's way, where nobody has brought the system's.
class PlainWindowSystem : public WindowSystem {
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

WindowSystem*& chosen() {
    static WindowSystem* system = nullptr;
    return system;
}

}  // namespace

WindowSystem& WindowSystem::current() {
    static PlainWindowSystem plain;
    return chosen() ? *chosen() : plain;
}

void WindowSystem::use(WindowSystem* system) {
    chosen() = system;
}

QPixmap WindowSystem::pictureOf(QScreen& /*screen*/, const QRect& /*frame*/) const {
    return {};
}

}  // namespace ostrel
