#pragma once

#include <QByteArray>

// Which of the desktop's services have a program behind them, as X selections tell (ICCCM 2.8).
namespace ostrel::X11Selections {

[[nodiscard]] bool isX11();

// Whether windows can be translucent. Every Wayland desktop is a compositor.
[[nodiscard]] bool hasCompositor();

// Whether there is a system tray of the XEMBED kind.
[[nodiscard]] bool hasTray();

// Asks the X server to tell this program of managers that come (MANAGER messages on the root).
void watchManagers();

// Whether a native event is such a message.
[[nodiscard]] bool isManagerMessage(const QByteArray& eventType, const void* event);

}  // namespace ostrel::X11Selections
