#include "app/mac/mac_window_system.h"

#include <QWidget>

#include "platform/macos/window_bridge.h"

namespace ostrel {
namespace {

// The NSView of the window, which is made with it.
void* viewOf(const QWidget& window) {
    return reinterpret_cast<void*>(window.winId());  // NOLINT(performance-no-int-to-ptr)
}

}  // namespace

// In a turn of its own: when the displays change a window hands the keyboard to the next one.
MacWindowSystem::MacWindowSystem() {
    giveBack_.setSingleShot(true);
    giveBack_.callOnTimeout([this] { keyboard_.giveBack(); });
}

// Not in full screen, as the toolkit has it: that would move to a Space of its own.
void MacWindowSystem::showCover(QWidget& window) {
    WindowBridge::coverDisplay(viewOf(window));
    window.show();
}

void MacWindowSystem::showCard(QWidget& window) {
    WindowBridge::floatBesideWork(viewOf(window));
    window.show();
}

bool MacWindowSystem::setKeyboardTaken(QWidget& window, bool isTaken) {
    if (isTaken) {
        giveBack_.stop();
        return keyboard_.take(viewOf(window));
    }
    giveBack_.start(0);
    return true;
}

}  // namespace ostrel
