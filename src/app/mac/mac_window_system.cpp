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
        keyboard_.take(viewOf(window));
    } else {
        keyboard_.giveBack();
    }
    return true;
}

}  // namespace ostrel
