#include "screens/qt_overlay_window.h"

#include <QKeyEvent>
#include <QWindow>
#include <cmath>

#include "overlay/overlay_manager.h"
#include "screens/overlay_keys.h"
#include "screens/overlay_surface.h"
#include "screens/window_system.h"

namespace ostrel {
namespace {

QRect pixelAligned(const Rect& frame) {
    return QRectF(frame.x, frame.y, frame.width, frame.height).toAlignedRect();
}

}  // namespace

void QtOverlayWindow::Retire::operator()(OverlaySurface* surface) const {
    surface->retire();
    surface->deleteLater();
}

QtOverlayWindow::QtOverlayWindow(OverlayManager& manager, BreakLogEntry::Kind kind,
                                 const ScreenSnapshot& screen, Role role)
    : manager_(manager),
      screen_(screen),
      role_(role),
      surface_(new OverlaySurface(manager, kind, role, [this] { manager_.didPaint(*this); })),
      keyboard_([this](bool isTaken) {
          return WindowSystem::current().setKeyboardTaken(*surface_, isTaken);
      }) {
    watchdog_.setSingleShot(true);
    watchdog_.setInterval(kWatchdogMs);
    watchdog_.callOnTimeout([this] {
        keyboard_.release();
        surface_->retire();
    });
    sessionChanges_ = manager.activeSession().onChange([this](const auto& session) {
        if (session) {
            watchdog_.stop();
        } else if (!isFading_) {
            watchdog_.start();
        }
    });
    surface_->appear(pixelAligned(screen.frame));
    surface_->windowHandle()->installEventFilter(this);
}

QtOverlayWindow::~QtOverlayWindow() {
    keyboard_.release();
    surface_->windowHandle()->removeEventFilter(this);
}

void QtOverlayWindow::cover(const ScreenSnapshot& screen, Role role) {
    screen_ = screen;
    role_ = role;
    surface_->moveTo(pixelAligned(screen.frame));
    surface_->setRole(role);
}

void QtOverlayWindow::takeKeyboard() {
    keyboard_.take();
}

void QtOverlayWindow::releaseKeyboard() {
    keyboard_.release();
}

void QtOverlayWindow::fadeOut(double seconds) {
    isFading_ = true;
    watchdog_.stop();
    keyboard_.release();
    surface_->fadeOut(seconds);
}

bool QtOverlayWindow::eventFilter(QObject*, QEvent* event) {
    return event->type() == QEvent::KeyPress && takesKey(*static_cast<QKeyEvent*>(event));
}

bool QtOverlayWindow::takesKey(const QKeyEvent& event) {
    if (isFading_) {
        return true;
    }
    const auto keyCode = OverlayKeys::virtualKeyCode(event);
    if (!keyCode) {
        return false;
    }
    // A key that is still down from the work before the break repeats; that is no answer.
    if (event.isAutoRepeat()) {
        return true;
    }
    return manager_.handleKey(*keyCode) != KeyOutcome::ignored;
}

}  // namespace ostrel
